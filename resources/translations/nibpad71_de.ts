<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>AboutBox</name>
    <message>
        <source>GNU Lesser General Public License, version 3. Linked as shared libraries, which may be replaced.</source>
        <translation>GNU Lesser General Public License, Version 3. Als gemeinsam benutzte Bibliotheken gebunden, die ersetzt werden dürfen.</translation>
    </message>
    <message>
        <source>Unicode License (ICU).</source>
        <translation>Unicode-Lizenz (ICU).</translation>
    </message>
    <message>
        <source>Bitstream Vera and Arev licences; changes by the DejaVu project are in the public domain.</source>
        <translation>Lizenzen von Bitstream Vera und Arev; die Änderungen des DejaVu-Projekts sind gemeinfrei.</translation>
    </message>
    <message>
        <source>GNU Lesser General Public License, version 2.1 or later.</source>
        <translation>GNU Lesser General Public License, Version 2.1 oder neuer.</translation>
    </message>
    <message>
        <source>Nib is built with these components:</source>
        <translation>Nib ist aus diesen Komponenten gebaut:</translation>
    </message>
    <message>
        <source>About Nib</source>
        <translation>Über Nib</translation>
    </message>
    <message>
        <source>Version %1
Qt %2</source>
        <translation>Version %1
Qt %2</translation>
    </message>
    <message>
        <source>An editor for programs and records of MultiValue databases</source>
        <translation>Ein Editor für Programme und Datensätze von MultiValue-Datenbanken</translation>
    </message>
    <message>
        <source>Licences</source>
        <translation>Lizenzen</translation>
    </message>
</context>
<context>
    <name>HelpWindow</name>
    <message>
        <source>Nib Help</source>
        <translation>Nib-Hilfe</translation>
    </message>
    <message>
        <source>Page</source>
        <translation>Seite</translation>
    </message>
    <message>
        <source>Search all pages</source>
        <translation>Alle Seiten durchsuchen</translation>
    </message>
    <message>
        <source>Contents</source>
        <translation>Inhalt</translation>
    </message>
    <message>
        <source>No page holds these words.</source>
        <translation>Keine Seite enthält diese Wörter.</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Forward</source>
        <translation>Vor</translation>
    </message>
    <message>
        <source>Home</source>
        <translation>Anfang</translation>
    </message>
    <message>
        <source>Larger</source>
        <translation>Größer</translation>
    </message>
    <message>
        <source>Smaller</source>
        <translation>Kleiner</translation>
    </message>
    <message>
        <source>Usual size</source>
        <translation>Normale Größe</translation>
    </message>
</context>
<context>
    <name>HitWords</name>
    <message>
        <source>Counting...</source>
        <translation>Wird gezählt...</translation>
    </message>
    <message>
        <source>More than %1 hits</source>
        <translation>Mehr als %1 Treffer</translation>
    </message>
    <message>
        <source>No hits</source>
        <translation>Keine Treffer</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>1 hit</source>
        <translation>1 Treffer</translation>
    </message>
    <message>
        <source>%1 hits</source>
        <translation>%1 Treffer</translation>
    </message>
    <message>
        <source>Character %1: %2</source>
        <translation>Zeichen %1: %2</translation>
    </message>
</context>
<context>
    <name>Logic</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>&amp;Abort</source>
        <translation>A&amp;bbrechen</translation>
    </message>
    <message>
        <source>&amp;Retry</source>
        <translation>&amp;Wiederholen</translation>
    </message>
    <message>
        <source>&amp;Ignore</source>
        <translation>&amp;Ignorieren</translation>
    </message>
    <message>
        <source>&amp;Try Again</source>
        <translation>E&amp;rneut versuchen</translation>
    </message>
    <message>
        <source>&amp;Continue</source>
        <translation>&amp;Fortfahren</translation>
    </message>
    <message>
        <source>&amp;Reload</source>
        <translation>&amp;Neu laden</translation>
    </message>
    <message>
        <source>&amp;Keep</source>
        <translation>&amp;Behalten</translation>
    </message>
    <message>
        <source>C&amp;ompare</source>
        <translation>&amp;Vergleichen</translation>
    </message>
    <message>
        <source>C&amp;lose</source>
        <translation>&amp;Schließen</translation>
    </message>
    <message>
        <source>&amp;Open</source>
        <translation>&amp;Öffnen</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Speichern</translation>
    </message>
    <message>
        <source>&amp;Export</source>
        <translation>E&amp;xportieren</translation>
    </message>
    <message>
        <source>I&amp;mport</source>
        <translation>I&amp;mportieren</translation>
    </message>
    <message>
        <source>It cannot be read.</source>
        <translation>Es lässt sich nicht lesen.</translation>
    </message>
    <message>
        <source>No name matches the filter.</source>
        <translation>Kein Name passt zum Filter.</translation>
    </message>
    <message>
        <source>Nothing here.</source>
        <translation>Hier ist nichts.</translation>
    </message>
    <message>
        <source>Only hidden files here.</source>
        <translation>Hier sind nur versteckte Dateien.</translation>
    </message>
    <message>
        <source>Select one place to go into, or the items to open.</source>
        <translation>Wählen Sie einen Ort, um hineinzugehen, oder die Items, die geöffnet werden sollen.</translation>
    </message>
    <message>
        <source>Account and connection</source>
        <translation>Konto und Verbindung</translation>
    </message>
    <message>
        <source>Lock of the item</source>
        <translation>Sperre des Items</translation>
    </message>
    <message>
        <source>Character set</source>
        <translation>Zeichensatz</translation>
    </message>
    <message>
        <source>Line ends</source>
        <translation>Zeilenenden</translation>
    </message>
    <message>
        <source>Locked here</source>
        <translation>Hier gesperrt</translation>
    </message>
    <message>
        <source>Not locked</source>
        <translation>Nicht gesperrt</translation>
    </message>
    <message>
        <source>Read only</source>
        <translation>Nur lesen</translation>
    </message>
    <message>
        <source>LF, mixed</source>
        <translation>LF, gemischt</translation>
    </message>
    <message>
        <source>CR LF, mixed</source>
        <translation>CR LF, gemischt</translation>
    </message>
    <message>
        <source>CR, mixed</source>
        <translation>CR, gemischt</translation>
    </message>
    <message>
        <source>Open an item or a file</source>
        <translation>Ein Item oder eine Datei öffnen</translation>
    </message>
    <message>
        <source>New document</source>
        <translation>Neues Dokument</translation>
    </message>
    <message>
        <source>Open DEMO</source>
        <translation>DEMO öffnen</translation>
    </message>
    <message>
        <source>the sample account</source>
        <translation>das Beispielkonto</translation>
    </message>
    <message>
        <source>Open the last session</source>
        <translation>Die letzte Sitzung öffnen</translation>
    </message>
    <message>
        <source>Open a program, change it, save it</source>
        <translation>Ein Programm öffnen, ändern, speichern</translation>
    </message>
    <message>
        <source>See what is wrong while you type, then compile</source>
        <translation>Beim Tippen sehen, was falsch ist, dann übersetzen</translation>
    </message>
    <message>
        <source>Find a name in all programs of an account</source>
        <translation>Einen Namen in allen Programmen eines Kontos finden</translation>
    </message>
    <message>
        <source>The first hour: a guide</source>
        <translation>Die erste Stunde: eine Anleitung</translation>
    </message>
    <message>
        <source>There is no such escape.</source>
        <translation>Diese Schreibweise mit Rückstrich gibt es nicht.</translation>
    </message>
    <message>
        <source>There is no such class of characters.</source>
        <translation>Diese Klasse von Zeichen gibt es nicht.</translation>
    </message>
    <message>
        <source>A parenthesis has no partner.</source>
        <translation>Eine runde Klammer hat kein Gegenstück.</translation>
    </message>
    <message>
        <source>The number is too large.</source>
        <translation>Die Zahl ist zu groß.</translation>
    </message>
    <message>
        <source>Braces hold one number, or two with a comma.</source>
        <translation>In geschweiften Klammern steht eine Zahl, oder zwei mit Komma.</translation>
    </message>
    <message>
        <source>The larger number stands before the smaller one.</source>
        <translation>Die größere Zahl steht vor der kleineren.</translation>
    </message>
    <message>
        <source>There is no such group.</source>
        <translation>Diese Gruppe gibt es nicht.</translation>
    </message>
    <message>
        <source>What is looked for behind must have a greatest length.</source>
        <translation>Was davor stehen soll, muss eine größte Länge haben.</translation>
    </message>
    <message>
        <source>A bracket has no partner.</source>
        <translation>Eine eckige Klammer hat kein Gegenstück.</translation>
    </message>
    <message>
        <source>The range begins behind its end.</source>
        <translation>Der Bereich beginnt hinter seinem Ende.</translation>
    </message>
    <message>
        <source>The expression is too large.</source>
        <translation>Der Ausdruck ist zu groß.</translation>
    </message>
    <message>
        <source>The expression is not understood here.</source>
        <translation>Der Ausdruck ist hier nicht zu verstehen.</translation>
    </message>
    <message>
        <source>The search was stopped: the expression takes too much time.</source>
        <translation>Die Suche wurde beendet: Der Ausdruck braucht zu viel Zeit.</translation>
    </message>
    <message>
        <source>The search was stopped: the expression needs too much memory.</source>
        <translation>Die Suche wurde beendet: Der Ausdruck braucht zu viel Speicher.</translation>
    </message>
    <message>
        <source>Dialect of programs</source>
        <translation>Dialekt der Programme</translation>
    </message>
    <message>
        <source>No dialect</source>
        <translation>Kein Dialekt</translation>
    </message>
</context>
<context>
    <name>Printing</name>
    <message>
        <source>The text ends on page %1; the pages asked for lie behind it.</source>
        <translation>Der Text endet auf Seite %1; die gewünschten Seiten liegen dahinter.</translation>
    </message>
    <message>
        <source>The printer does not take the pages.</source>
        <translation>Der Drucker nimmt die Seiten nicht an.</translation>
    </message>
    <message>
        <source>Printing failed.</source>
        <translation>Das Drucken ist fehlgeschlagen.</translation>
    </message>
    <message>
        <source>Pre&amp;view...</source>
        <translation>&amp;Vorschau...</translation>
    </message>
    <message>
        <source>Page Set&amp;up...</source>
        <translation>Seite ein&amp;richten...</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>Vorschau</translation>
    </message>
    <message>
        <source>%1 - Preview</source>
        <translation>%1 - Vorschau</translation>
    </message>
    <message>
        <source>%1 cannot be written: %2</source>
        <translation>%1 lässt sich nicht schreiben: %2</translation>
    </message>
</context>
<context>
    <name>QtCompletionList</name>
    <message>
        <source>statement</source>
        <translation>Anweisung</translation>
    </message>
    <message>
        <source>function</source>
        <translation>Funktion</translation>
    </message>
    <message>
        <source>clause</source>
        <translation>Klausel</translation>
    </message>
    <message>
        <source>variable</source>
        <translation>Variable</translation>
    </message>
    <message>
        <source>constant</source>
        <translation>Konstante</translation>
    </message>
    <message>
        <source>label</source>
        <translation>Marke</translation>
    </message>
    <message>
        <source>subroutine</source>
        <translation>Unterprogramm</translation>
    </message>
    <message>
        <source>item</source>
        <translation>Item</translation>
    </message>
    <message>
        <source>file</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>closes the block</source>
        <translation>schließt den Block</translation>
    </message>
    <message>
        <source>Suggestions</source>
        <translation>Vorschläge</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
</context>
<context>
    <name>QtDocumentTabs</name>
    <message>
        <source>Close %1</source>
        <translation>%1 schließen</translation>
    </message>
</context>
<context>
    <name>QtMenuBar</name>
    <message>
        <source>Tool Bar</source>
        <translation>Werkzeugleiste</translation>
    </message>
    <message>
        <source>Menu Bar</source>
        <translation>Menüleiste</translation>
    </message>
    <message>
        <source>Status Bar</source>
        <translation>Statusleiste</translation>
    </message>
    <message>
        <source>Context Menu</source>
        <translation>Kontextmenü</translation>
    </message>
    <message>
        <source>Tab Menu</source>
        <translation>Menü der Reiter</translation>
    </message>
    <message>
        <source>More Tools</source>
        <translation>Weitere Werkzeuge</translation>
    </message>
    <message>
        <source>More Menus</source>
        <translation>Weitere Menüs</translation>
    </message>
</context>
<context>
    <name>QtPaneHelp</name>
    <message>
        <source>Alt+Return offers to mend it.</source>
        <translation>Alt+Eingabe bietet an, es zu beheben.</translation>
    </message>
    <message>
        <source>Quick Mends</source>
        <translation>Schnelle Abhilfen</translation>
    </message>
</context>
<context>
    <name>QtPasswords</name>
    <message>
        <source>&amp;Keep it in the store of secrets</source>
        <translation>Im Geheimnisspeicher &amp;behalten</translation>
    </message>
    <message>
        <source>The server refused the user or the password.</source>
        <translation>Der Server hat den Benutzer oder das Passwort abgelehnt.</translation>
    </message>
    <message>
        <source>Password of %1 on %2:</source>
        <translation>Passwort von %1 auf %2:</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>Passwort</translation>
    </message>
    <message>
        <source>This desktop has no store of secrets.</source>
        <translation>Dieser Desktop hat keinen Geheimnisspeicher.</translation>
    </message>
</context>
<context>
    <name>QtTabRow</name>
    <message>
        <source>All Documents</source>
        <translation>Alle Dokumente</translation>
    </message>
</context>
<context>
    <name>QtWaitNotice</name>
    <message>
        <source>The host is running %1</source>
        <translation>Der Host führt %1 aus</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Elapsed time</source>
        <translation>Vergangene Zeit</translation>
    </message>
    <message>
        <source>Elapsed time %1</source>
        <translation>Vergangene Zeit %1</translation>
    </message>
    <message>
        <source>Sent</source>
        <translation>Gesendet</translation>
    </message>
    <message>
        <source>&amp;Reset Connection</source>
        <translation>Verbindung &amp;zurücksetzen</translation>
    </message>
    <message>
        <source>Busy</source>
        <translation>Beschäftigt</translation>
    </message>
    <message>
        <source>The MultiValue database server is busy. Please try again.</source>
        <translation>Der MultiValue-Datenbankserver ist beschäftigt. Bitte noch einmal versuchen.</translation>
    </message>
    <message>
        <source>A request to the MultiValue database server is pending. Please wait.

If your Ventrino session is no longer running, try closing or resetting the session.</source>
        <translation>Eine Anfrage an den MultiValue-Datenbankserver läuft. Bitte warten.

Wenn Ihre Ventrino-Sitzung nicht mehr läuft, schließen Sie die Sitzung oder setzen Sie sie zurück.</translation>
    </message>
</context>
<context>
    <name>frmDocument</name>
    <message>
        <source>Window Menu</source>
        <translation>Fenstermenü</translation>
    </message>
</context>
<context>
    <name>frmFind</name>
    <message>
        <source>Find what</source>
        <translation>Suchen nach</translation>
    </message>
    <message>
        <source>Replace with</source>
        <translation>Ersetzen durch</translation>
    </message>
    <message>
        <source>Options:</source>
        <translation>Optionen:</translation>
    </message>
    <message>
        <source>(text is replaced downwards)</source>
        <translation>(ersetzt wird abwärts)</translation>
    </message>
    <message>
        <source>Regular e&amp;xpression</source>
        <translation>Re&amp;gulärer Ausdruck</translation>
    </message>
    <message>
        <source>In each line; $1 in the replacement is what the first pair of parentheses found.</source>
        <translation>In jeder Zeile; $1 in der Ersetzung ist, was das erste Klammerpaar gefunden hat.</translation>
    </message>
    <message>
        <source>&amp;In Account...</source>
        <translation>&amp;Im Account...</translation>
    </message>
    <message>
        <source>Searches all items of files of an account</source>
        <translation>Durchsucht alle Items von Dateien eines Accounts</translation>
    </message>
    <message>
        <source>Only one document is open.</source>
        <translation>Nur ein Dokument ist offen.</translation>
    </message>
    <message>
        <source>No text is selected.</source>
        <translation>Es ist kein Text ausgewählt.</translation>
    </message>
</context>
<context>
    <name>frmFindAccount</name>
    <message>
        <source>Find in Account</source>
        <translation>Im Konto suchen</translation>
    </message>
    <message>
        <source>Find what</source>
        <translation>Suchen nach</translation>
    </message>
    <message>
        <source>Replace with</source>
        <translation>Ersetzen durch</translation>
    </message>
    <message>
        <source>Account</source>
        <translation>Konto</translation>
    </message>
    <message>
        <source>&amp;Match case</source>
        <translation>&amp;Groß-/Kleinschreibung beachten</translation>
    </message>
    <message>
        <source>Match &amp;whole word only</source>
        <translation>Nur ganze &amp;Wörter</translation>
    </message>
    <message>
        <source>Fi&amp;nd what:</source>
        <translation>Suchen na&amp;ch:</translation>
    </message>
    <message>
        <source>Re&amp;place with:</source>
        <translation>Ersetzen d&amp;urch:</translation>
    </message>
    <message>
        <source>A&amp;ccount:</source>
        <translation>&amp;Konto:</translation>
    </message>
    <message>
        <source>Files</source>
        <translation>Dateien</translation>
    </message>
    <message>
        <source>&amp;All</source>
        <translation>A&amp;lle</translation>
    </message>
    <message>
        <source>Non&amp;e</source>
        <translation>Kei&amp;ne</translation>
    </message>
    <message>
        <source>Fi&amp;les:</source>
        <translation>&amp;Dateien:</translation>
    </message>
    <message>
        <source>Items</source>
        <translation>Items</translation>
    </message>
    <message>
        <source>In INV* the star stands for any characters, in INV? the question mark for one.</source>
        <translation>In INV* steht der Stern für beliebige Zeichen, in INV? das Fragezeichen für eines.</translation>
    </message>
    <message>
        <source>&amp;Items:</source>
        <translation>&amp;Items:</translation>
    </message>
    <message>
        <source>&amp;Find</source>
        <translation>&amp;Suchen</translation>
    </message>
    <message>
        <source>&amp;Replace...</source>
        <translation>&amp;Ersetzen...</translation>
    </message>
    <message>
        <source>&amp;Stop</source>
        <translation>&amp;Anhalten</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>on %1</source>
        <translation>auf %1</translation>
    </message>
    <message>
        <source>The list of files is being read.</source>
        <translation>Die Liste der Dateien wird gelesen.</translation>
    </message>
    <message>
        <source>There are no files.</source>
        <translation>Es gibt keine Dateien.</translation>
    </message>
    <message>
        <source>Files: %1 of %2   Items: %3   Hits: %4   Time: %5 s</source>
        <translation>Dateien: %1 von %2   Items: %3   Treffer: %4   Zeit: %5 s</translation>
    </message>
    <message>
        <source>Skipped, no texts: %1</source>
        <translation>Übergangen, keine Texte: %1</translation>
    </message>
    <message>
        <source>Not readable: %1</source>
        <translation>Nicht lesbar: %1</translation>
    </message>
    <message>
        <source>Regular e&amp;xpression</source>
        <translation>Regulärer Ausd&amp;ruck</translation>
    </message>
</context>
<context>
    <name>frmFindBar</name>
    <message>
        <source>Find</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Find:</source>
        <translation>Suchen:</translation>
    </message>
    <message>
        <source>The hit before (Shift+Enter)</source>
        <translation>Der Treffer davor (Umschalt+Eingabe)</translation>
    </message>
    <message>
        <source>The next hit (Enter)</source>
        <translation>Der nächste Treffer (Eingabe)</translation>
    </message>
    <message>
        <source>Match case</source>
        <translation>Groß- und Kleinschreibung unterscheiden</translation>
    </message>
    <message>
        <source>Match whole word only</source>
        <translation>Nur ganze Wörter</translation>
    </message>
    <message>
        <source>Regular expression</source>
        <translation>Regulärer Ausdruck</translation>
    </message>
    <message>
        <source>Find All</source>
        <translation>Alle suchen</translation>
    </message>
    <message>
        <source>Lists all hits</source>
        <translation>Zeigt alle Treffer als Liste</translation>
    </message>
    <message>
        <source>In Account...</source>
        <translation>Im Account...</translation>
    </message>
    <message>
        <source>Searches all items of files of an account</source>
        <translation>Durchsucht alle Items von Dateien eines Accounts</translation>
    </message>
    <message>
        <source>Close (Escape)</source>
        <translation>Schließen (Esc)</translation>
    </message>
    <message>
        <source>Round the end of the text</source>
        <translation>Über das Textende hinaus</translation>
    </message>
</context>
<context>
    <name>frmGoto</name>
    <message>
        <source>Goto</source>
        <translation>Gehe zu</translation>
    </message>
    <message>
        <source>&amp;Label:</source>
        <translation>&amp;Marke:</translation>
    </message>
    <message>
        <source>Line &amp;number:</source>
        <translation>Zeilen&amp;nummer:</translation>
    </message>
    <message>
        <source>Label</source>
        <translation>Marke</translation>
    </message>
    <message>
        <source>Line number</source>
        <translation>Zeilennummer</translation>
    </message>
    <message>
        <source>&amp;Skip this dialog when a label is double-clicked</source>
        <translation>Bei Doppelklick auf eine Marke diesen Dialog über&amp;springen</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>1 to %1</source>
        <translation>1 bis %1</translation>
    </message>
</context>
<context>
    <name>frmMain</name>
    <message>
        <source>Documents</source>
        <translation>Dokumente</translation>
    </message>
</context>
<context>
    <name>frmOutline</name>
    <message>
        <source>Outline</source>
        <translation>Gliederung</translation>
    </message>
    <message>
        <source>Filter</source>
        <translation>Filter</translation>
    </message>
    <message>
        <source>Filter of the outline</source>
        <translation>Filter der Gliederung</translation>
    </message>
    <message>
        <source>Label %1</source>
        <translation>Marke %1</translation>
    </message>
    <message>
        <source>Subroutine %1</source>
        <translation>Unterprogramm %1</translation>
    </message>
</context>
<context>
    <name>frmProblems</name>
    <message>
        <source>Errors: %1</source>
        <translation>Fehler: %1</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>Warnings: %1</source>
        <translation>Warnungen: %1</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <source>Hints: %1</source>
        <translation>Hinweise: %1</translation>
    </message>
    <message>
        <source>Hint</source>
        <translation>Hinweis</translation>
    </message>
    <message>
        <source>Problem</source>
        <translation>Problem</translation>
    </message>
    <message>
        <source>Document</source>
        <translation>Dokument</translation>
    </message>
    <message>
        <source>Line</source>
        <translation>Zeile</translation>
    </message>
    <message>
        <source>Problems</source>
        <translation>Probleme</translation>
    </message>
</context>
<context>
    <name>frmQuickOpen</name>
    <message>
        <source>Quick Open</source>
        <translation>Schnell öffnen</translation>
    </message>
    <message>
        <source>Letters of an item&apos;s name; with @ in front, of a label or subroutine</source>
        <translation>Buchstaben aus dem Namen eines Items; mit @ davor aus dem einer Marke oder eines Unterprogramms</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Found</source>
        <translation>Gefunden</translation>
    </message>
    <message>
        <source>line %1</source>
        <translation>Zeile %1</translation>
    </message>
</context>
<context>
    <name>frmRename</name>
    <message>
        <source>Rename %1</source>
        <translation>%1 umbenennen</translation>
    </message>
    <message>
        <source>Place</source>
        <translation>Stelle</translation>
    </message>
    <message>
        <source>Line</source>
        <translation>Zeile</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>Places</source>
        <translation>Stellen</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>Umbenennen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>&amp;New name:</source>
        <translation>&amp;Neuer Name:</translation>
    </message>
    <message>
        <source>Places: %1</source>
        <translation>Stellen: %1</translation>
    </message>
</context>
<context>
    <name>frmResults</name>
    <message>
        <source>Results</source>
        <translation>Ergebnisse</translation>
    </message>
</context>
<context>
    <name>frmSettings</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Font</source>
        <translation>Schrift</translation>
    </message>
    <message>
        <source>Font name</source>
        <translation>Name der Schrift</translation>
    </message>
    <message>
        <source>Font size</source>
        <translation>Größe der Schrift</translation>
    </message>
    <message>
        <source>Adds the keyword, or gives a keyword of the list the block indent chosen here</source>
        <translation>Fügt das Schlüsselwort hinzu, oder gibt einem Schlüsselwort der Liste die hier gewählte Blockeinrückung</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>Vorschau</translation>
    </message>
    <message>
        <source>Hard to read</source>
        <translation>Schlecht lesbar</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>Formatieren</translation>
    </message>
    <message>
        <source>Co&amp;nnections...</source>
        <translation>Verbi&amp;ndungen...</translation>
    </message>
</context>
<context>
    <name>frmStart</name>
    <message>
        <source>Programs and records of MultiValue databases</source>
        <translation>Programme und Sätze von MultiValue-Datenbanken</translation>
    </message>
    <message>
        <source>Start and first steps</source>
        <translation>Start und erste Schritte</translation>
    </message>
    <message>
        <source>Recent items, connections and accounts</source>
        <translation>Zuletzt geöffnete Items, Verbindungen und Konten</translation>
    </message>
    <message>
        <source>Start page</source>
        <translation>Startseite</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>Start</translation>
    </message>
    <message>
        <source>First steps</source>
        <translation>Erste Schritte</translation>
    </message>
    <message>
        <source>Recent</source>
        <translation>Zuletzt geöffnet</translation>
    </message>
    <message>
        <source>Connections and accounts</source>
        <translation>Verbindungen und Konten</translation>
    </message>
</context>
<context>
    <name>nib::PickerItemModel</name>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Modified</source>
        <translation>Geändert</translation>
    </message>
    <message>
        <source>Locked by</source>
        <translation>Gesperrt von</translation>
    </message>
    <message>
        <source>(hashed file)</source>
        <translation>(Hash-Datei)</translation>
    </message>
    <message>
        <source>(read-only)</source>
        <translation>(schreibgeschützt)</translation>
    </message>
</context>
<context>
    <name>nib::PickerPathBar</name>
    <message>
        <source>Path</source>
        <translation>Pfad</translation>
    </message>
    <message>
        <source>Places above</source>
        <translation>Orte darüber</translation>
    </message>
    <message>
        <source>All places</source>
        <translation>Alle Orte</translation>
    </message>
</context>
<context>
    <name>nib::SourceViewWidget</name>
    <message>
        <source>Vertical scroll bar</source>
        <translation>Senkrechte Bildlaufleiste</translation>
    </message>
    <message>
        <source>Horizontal scroll bar</source>
        <translation>Waagerechte Bildlaufleiste</translation>
    </message>
</context>
<context>
    <name>nib::frmConnections</name>
    <message>
        <source>Connections</source>
        <translation>Verbindungen</translation>
    </message>
    <message>
        <source>C&amp;onnections:</source>
        <translation>&amp;Verbindungen:</translation>
    </message>
    <message>
        <source>&amp;Add</source>
        <translation>&amp;Hinzufügen</translation>
    </message>
    <message>
        <source>Re&amp;move</source>
        <translation>&amp;Entfernen</translation>
    </message>
    <message>
        <source>&amp;Name:</source>
        <translation>&amp;Name:</translation>
    </message>
    <message>
        <source>Folders of accounts</source>
        <translation>Ordner mit Konten</translation>
    </message>
    <message>
        <source>MultiValue server</source>
        <translation>MultiValue-Server</translation>
    </message>
    <message>
        <source>&amp;Kind:</source>
        <translation>&amp;Art:</translation>
    </message>
    <message>
        <source>&amp;Folder:</source>
        <translation>&amp;Ordner:</translation>
    </message>
    <message>
        <source>Add&amp;ress:</source>
        <translation>A&amp;dresse:</translation>
    </message>
    <message>
        <source>&amp;Port:</source>
        <translation>&amp;Port:</translation>
    </message>
    <message>
        <source>&amp;User:</source>
        <translation>&amp;Benutzer:</translation>
    </message>
    <message>
        <source>A&amp;ccount:</source>
        <translation>&amp;Konto:</translation>
    </message>
    <message>
        <source>Tunn&amp;el:</source>
        <translation>T&amp;unnel:</translation>
    </message>
    <message>
        <source>As the account has them</source>
        <translation>Wie im Konto</translation>
    </message>
    <message>
        <source>Plain</source>
        <translation>Einfach</translation>
    </message>
    <message>
        <source>Escaped as a server does</source>
        <translation>Maskiert wie von einem Server</translation>
    </message>
    <message>
        <source>&amp;Item ids:</source>
        <translation>&amp;Item-Ids:</translation>
    </message>
    <message>
        <source>Character &amp;set:</source>
        <translation>&amp;Zeichensatz:</translation>
    </message>
    <message>
        <source>Latin-1, new items in UTF-8</source>
        <translation>Latin-1, neue Items in UTF-8</translation>
    </message>
    <message>
        <source>S&amp;hown as:</source>
        <translation>An&amp;gezeigt als:</translation>
    </message>
    <message>
        <source>&amp;Test</source>
        <translation>&amp;Testen</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>&amp;Browse...</source>
        <translation>Du&amp;rchsuchen...</translation>
    </message>
    <message>
        <source>* (default connection)</source>
        <translation>* (Standardverbindung)</translation>
    </message>
    <message>
        <source>Folder of the accounts</source>
        <translation>Ordner der Konten</translation>
    </message>
    <message>
        <source>Testing...</source>
        <translation>Wird getestet...</translation>
    </message>
    <message>
        <source>Co&amp;lor:</source>
        <translation>Fa&amp;rbe:</translation>
    </message>
</context>
<context>
    <name>nib::frmItemPicker</name>
    <message>
        <source>&amp;Places:</source>
        <translation>O&amp;rte:</translation>
    </message>
    <message>
        <source>Places</source>
        <translation>Orte</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Up</source>
        <translation>Nach oben</translation>
    </message>
    <message>
        <source>Items</source>
        <translation>Items</translation>
    </message>
    <message>
        <source>a user (port 1234)</source>
        <translation>ein Benutzer (Port 1234)</translation>
    </message>
    <message>
        <source>Item</source>
        <translation>Item</translation>
    </message>
    <message>
        <source>Filter</source>
        <translation>Filter</translation>
    </message>
    <message>
        <source>Part of a name, or a pattern with * and ?</source>
        <translation>Teil eines Namens oder ein Muster mit * und ?</translation>
    </message>
    <message>
        <source>Show &amp;hidden</source>
        <translation>&amp;Versteckte zeigen</translation>
    </message>
    <message>
        <source>&amp;Item:</source>
        <translation>&amp;Item:</translation>
    </message>
    <message>
        <source>&amp;Filter:</source>
        <translation>&amp;Filter:</translation>
    </message>
    <message>
        <source>Open &amp;read-only</source>
        <translation>Schreib&amp;geschützt öffnen</translation>
    </message>
    <message>
        <source>&amp;Cancel</source>
        <translation>&amp;Abbrechen</translation>
    </message>
    <message>
        <source>Co&amp;nnections...</source>
        <translation>Verbi&amp;ndungen...</translation>
    </message>
</context>
</TS>
