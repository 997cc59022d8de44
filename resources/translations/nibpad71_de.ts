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
    <message>
        <source>&amp;Close</source>
        <translation>S&amp;chließen</translation>
    </message>
</context>
<context>
    <name>Checker</name>
    <message>
        <source>line %1</source>
        <translation>Zeile %1</translation>
    </message>
    <message>
        <source>line %1 of %2</source>
        <translation>Zeile %1 von %2</translation>
    </message>
    <message>
        <source>in %1: %2</source>
        <translation>in %1: %2</translation>
    </message>
    <message>
        <source>END closes no block; open is %1 of %2.</source>
        <translation>END schließt keinen Block; offen ist %1 aus %2.</translation>
    </message>
    <message>
        <source>END closes no block, and the program goes on below it.</source>
        <translation>END schließt keinen Block, und das Programm geht darunter weiter.</translation>
    </message>
    <message>
        <source>%1 without %2.</source>
        <translation>%1 ohne %2.</translation>
    </message>
    <message>
        <source>%1 is not closed by %2 before %3 in %4.</source>
        <translation>%1 ist nicht mit %2 geschlossen, bevor in %4 %3 kommt.</translation>
    </message>
    <message>
        <source>%1 is not closed: %2 is missing.</source>
        <translation>%1 ist nicht geschlossen: %2 fehlt.</translation>
    </message>
    <message>
        <source>%1 is not closed by END before the label in %2.</source>
        <translation>%1 ist vor der Marke in %2 nicht mit END geschlossen.</translation>
    </message>
    <message>
        <source>Label %1 is defined twice, first in %2.</source>
        <translation>Die Marke %1 ist zweimal definiert, zuerst in %2.</translation>
    </message>
    <message>
        <source>%1 to label %2, which does not exist.</source>
        <translation>%1 zur Marke %2, die es nicht gibt.</translation>
    </message>
    <message>
        <source>The string that begins with %1 is not closed.</source>
        <translation>Die Zeichenkette, die mit %1 beginnt, ist nicht geschlossen.</translation>
    </message>
    <message>
        <source>Include item %1 does not exist.</source>
        <translation>Das Include-Item %1 gibt es nicht.</translation>
    </message>
    <message>
        <source>Include item %1 does not exist: there is no file %2.</source>
        <translation>Das Include-Item %1 gibt es nicht: Es gibt keine Datei %2.</translation>
    </message>
    <message>
        <source>Nothing jumps to label %1.</source>
        <translation>Nichts springt zur Marke %1.</translation>
    </message>
    <message>
        <source>%1 is read, and nothing sets it.</source>
        <translation>%1 wird gelesen, aber nirgends gesetzt.</translation>
    </message>
    <message>
        <source>%1 is set, and nothing reads it.</source>
        <translation>%1 wird gesetzt, aber nirgends gelesen.</translation>
    </message>
    <message>
        <source>%1 takes %2 arguments at least, not %3.</source>
        <translation>%1 erwartet mindestens %2 Argumente, nicht %3.</translation>
    </message>
    <message>
        <source>%1 takes %2 arguments at most, not %3.</source>
        <translation>%1 erwartet höchstens %2 Argumente, nicht %3.</translation>
    </message>
    <message>
        <source>%1 takes %2 arguments, not %3.</source>
        <translation>Anzahl der Argumente von %1: %2, nicht %3.</translation>
    </message>
    <message>
        <source>%1 has %2 dimension, not %3.</source>
        <translation>%1 hat %2 Dimension, nicht %3.</translation>
    </message>
    <message>
        <source>%1 has %2 dimensions, not %3.</source>
        <translation>%1 hat %2 Dimensionen, nicht %3.</translation>
    </message>
    <message>
        <source>Index %1 lies outside %2, which has %3 elements.</source>
        <translation>Der Index %1 liegt außerhalb von %2 mit %3 Elementen.</translation>
    </message>
    <message>
        <source>An assignment cannot stand in a condition.</source>
        <translation>In einer Bedingung kann keine Zuweisung stehen.</translation>
    </message>
    <message>
        <source>No path of the program leads here.</source>
        <translation>Kein Weg des Programms führt hierher.</translation>
    </message>
    <message>
        <source>GOSUB leads to %1, and no path from there comes to RETURN.</source>
        <translation>GOSUB führt zu %1, und kein Weg von dort kommt zu RETURN.</translation>
    </message>
    <message>
        <source>The program comes to this RETURN without a GOSUB.</source>
        <translation>Das Programm kommt ohne GOSUB zu diesem RETURN.</translation>
    </message>
    <message>
        <source>The program runs on into subroutine %1.</source>
        <translation>Das Programm läuft in das Unterprogramm %1 hinein.</translation>
    </message>
    <message>
        <source>The END in line %1, which closes this block, stands further left than it.</source>
        <translation>Das END in Zeile %1, das diesen Block schließt, steht weiter links als er.</translation>
    </message>
    <message>
        <source>No path from here writes, deletes or releases the record.</source>
        <translation>Kein Weg von hier schreibt oder löscht den Satz oder gibt ihn frei.</translation>
    </message>
    <message>
        <source>There is no subroutine %1 in this account.</source>
        <translation>Ein Unterprogramm %1 gibt es in diesem Konto nicht.</translation>
    </message>
    <message>
        <source>%1 takes %2 argument, and here it is given %3.</source>
        <translation>%1 erwartet %2 Argument, hier bekommt es %3.</translation>
    </message>
    <message>
        <source>%1 takes %2 arguments, and here it is given %3.</source>
        <translation>%1 erwartet %2 Argumente, hier bekommt es %3.</translation>
    </message>
    <message>
        <source>COMMON differs: %1.</source>
        <translation>COMMON weicht ab: %1.</translation>
    </message>
    <message>
        <source>COMMON /%1/ differs: %2.</source>
        <translation>COMMON /%1/ weicht ab: %2.</translation>
    </message>
    <message>
        <source>member %1, %2, is %3 here and %4 in %5</source>
        <translation>Element %1, %2, ist hier %3 und in %5 %4</translation>
    </message>
    <message>
        <source>no array</source>
        <translation>kein Feld</translation>
    </message>
    <message>
        <source>%1 member here and %2 in %3</source>
        <translation>%1 Element hier, %2 in %3</translation>
    </message>
    <message>
        <source>%1 members here and %2 in %3</source>
        <translation>%1 Elemente hier, %2 in %3</translation>
    </message>
    <message>
        <source>Remove the label</source>
        <translation>Die Marke entfernen</translation>
    </message>
    <message>
        <source>Change to %1</source>
        <translation>In %1 ändern</translation>
    </message>
    <message>
        <source>Insert END</source>
        <translation>END einfügen</translation>
    </message>
    <message>
        <source>Silence %1 here</source>
        <translation>%1 hier nicht melden</translation>
    </message>
    <message>
        <source>What opens a block and what closes it do not match.</source>
        <translation>Was einen Block öffnet und was ihn schließt, passt nicht zusammen.</translation>
    </message>
    <message>
        <source>A string ends with a quote of the kind that it begins with, on the same line.</source>
        <translation>Eine Zeichenkette endet in derselben Zeile mit einem Anführungszeichen der Art, mit der sie beginnt.</translation>
    </message>
    <message>
        <source>A statement has a closing parenthesis for each that it opens.</source>
        <translation>Eine Anweisung schließt jede Klammer, die sie öffnet.</translation>
    </message>
    <message>
        <source>GOTO and GOSUB name a label of the same routine.</source>
        <translation>GOTO und GOSUB nennen eine Marke derselben Routine.</translation>
    </message>
    <message>
        <source>A label stands once in a routine.</source>
        <translation>Eine Marke steht in einer Routine nur einmal.</translation>
    </message>
    <message>
        <source>An included item is in the file that its statement names, or beside the program.</source>
        <translation>Ein Include-Item steht in der Datei, die seine Anweisung nennt, oder neben dem Programm.</translation>
    </message>
    <message>
        <source>The END of a block stands as far right as the line that opens it; this one stands further left, as if the END of the block were missing.</source>
        <translation>Das END eines Blocks steht so weit rechts wie die Zeile, die ihn öffnet; dieses steht weiter links, als fehlte das END des Blocks.</translation>
    </message>
    <message>
        <source>The variable is read, and no statement of the program gives it a value.</source>
        <translation>Die Variable wird gelesen, und keine Anweisung des Programms gibt ihr einen Wert.</translation>
    </message>
    <message>
        <source>The variable is given a value that no statement of the program reads.</source>
        <translation>Die Variable bekommt einen Wert, den keine Anweisung des Programms liest.</translation>
    </message>
    <message>
        <source>No GOTO, GOSUB or ON names the label.</source>
        <translation>Kein GOTO, GOSUB oder ON nennt die Marke.</translation>
    </message>
    <message>
        <source>No path of the program comes to the statement: what stands above it leads away.</source>
        <translation>Kein Weg des Programms kommt zu der Anweisung: Was darüber steht, führt von ihr weg.</translation>
    </message>
    <message>
        <source>GOSUB comes back with RETURN; from this label on, none can be reached.</source>
        <translation>GOSUB kommt mit RETURN zurück; von dieser Marke aus ist keines zu erreichen.</translation>
    </message>
    <message>
        <source>The program itself comes to the RETURN, which has no GOSUB to go back to. STOP ends a program.</source>
        <translation>Das Programm selbst kommt zu dem RETURN, das zu keinem GOSUB zurückkehren kann. STOP beendet ein Programm.</translation>
    </message>
    <message>
        <source>The program runs on into a subroutine. A STOP may be missing.</source>
        <translation>Das Programm läuft in ein Unterprogramm hinein. Vielleicht fehlt ein STOP.</translation>
    </message>
    <message>
        <source>READU locks a record until it is written, deleted or released; no path of the program does any of that.</source>
        <translation>READU sperrt einen Satz, bis er geschrieben, gelöscht oder freigegeben wird; kein Weg des Programms tut das.</translation>
    </message>
    <message>
        <source>An array is used with as many indices as it is dimensioned with.</source>
        <translation>Ein Feld wird mit so vielen Indizes benutzt, wie es Dimensionen hat.</translation>
    </message>
    <message>
        <source>The index lies outside the array.</source>
        <translation>Der Index liegt außerhalb des Feldes.</translation>
    </message>
    <message>
        <source>What is called takes another number of arguments.</source>
        <translation>Was aufgerufen wird, erwartet eine andere Anzahl von Argumenten.</translation>
    </message>
    <message>
        <source>No item of the account, and nothing in its VOC, has the name that is called.</source>
        <translation>Kein Item des Kontos und nichts in seinem VOC hat den aufgerufenen Namen.</translation>
    </message>
    <message>
        <source>Programs that share a COMMON area name the same members in it, with the same dimensions.</source>
        <translation>Programme, die einen COMMON-Bereich teilen, nennen darin dieselben Elemente mit denselben Dimensionen.</translation>
    </message>
    <message>
        <source>A condition compares; an operator that gives a value cannot stand in it.</source>
        <translation>Eine Bedingung vergleicht; ein Operator, der einen Wert zuweist, kann nicht darin stehen.</translation>
    </message>
</context>
<context>
    <name>HelpPages</name>
    <message>
        <source>help</source>
        <extracomment>Where the help in this language stands, such as help/de; help itself where there is none.</extracomment>
        <translation>help/de</translation>
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
        <translation>Beim Tippen sehen, was falsch ist, dann kompilieren</translation>
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
    <message>
        <source>&amp;Yes</source>
        <translation>&amp;Ja</translation>
    </message>
    <message>
        <source>&amp;No</source>
        <translation>&amp;Nein</translation>
    </message>
    <message>
        <source>Yes to &amp;All</source>
        <translation>Ja für &amp;alle</translation>
    </message>
    <message>
        <source>Do not show this &amp;warning again</source>
        <translation>Diese &amp;Warnung nicht mehr zeigen</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;Further Carets</source>
        <translation>Weitere &amp;Schreibmarken</translation>
    </message>
    <message>
        <source>&amp;Search</source>
        <translation>&amp;Suchen</translation>
    </message>
    <message>
        <source>&amp;Program</source>
        <translation>P&amp;rogramm</translation>
    </message>
    <message>
        <source>Boo&amp;kmark</source>
        <translation>&amp;Lesezeichen</translation>
    </message>
    <message>
        <source>&amp;Insert</source>
        <translation>&amp;Einfügen</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>&amp;Marks</source>
        <translation>&amp;Markierungen</translation>
    </message>
    <message>
        <source>&amp;Tools</source>
        <translation>E&amp;xtras</translation>
    </message>
    <message>
        <source>Loc&amp;k</source>
        <translation>&amp;Sperre</translation>
    </message>
    <message>
        <source>C&amp;haracter Set</source>
        <translation>&amp;Zeichensatz</translation>
    </message>
    <message>
        <source>Line &amp;Ends</source>
        <translation>Zeilen&amp;enden</translation>
    </message>
    <message>
        <source>&amp;Window</source>
        <translation>&amp;Fenster</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;New</source>
        <translation>&amp;Neu</translation>
    </message>
    <message>
        <source>&amp;Open...</source>
        <translation>&amp;Öffnen...</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>S&amp;chließen</translation>
    </message>
    <message>
        <source>Save &amp;As...</source>
        <translation>Speichern &amp;unter...</translation>
    </message>
    <message>
        <source>Sa&amp;ve All</source>
        <translation>&amp;Alle speichern</translation>
    </message>
    <message>
        <source>&amp;Print...</source>
        <translation>&amp;Drucken...</translation>
    </message>
    <message>
        <source>&amp;Document Properties</source>
        <translation>Dokument&amp;eigenschaften</translation>
    </message>
    <message>
        <source>E&amp;xit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Rückgängig</translation>
    </message>
    <message>
        <source>Undo E&amp;very Replacement</source>
        <translation>&amp;Jede Ersetzung zurücknehmen</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Wiederherstellen</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>A&amp;usschneiden</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>Einfü&amp;gen</translation>
    </message>
    <message>
        <source>C&amp;lear</source>
        <translation>&amp;Löschen</translation>
    </message>
    <message>
        <source>&amp;Delete Line</source>
        <translation>Zeile lös&amp;chen</translation>
    </message>
    <message>
        <source>Select &amp;All</source>
        <translation>&amp;Alles auswählen</translation>
    </message>
    <message>
        <source>&amp;Indent</source>
        <translation>E&amp;inrücken</translation>
    </message>
    <message>
        <source>&amp;Outdent</source>
        <translation>Ausr&amp;ücken</translation>
    </message>
    <message>
        <source>Move &amp;Up</source>
        <translation>Nach &amp;oben</translation>
    </message>
    <message>
        <source>Move &amp;Down</source>
        <translation>Nach &amp;unten</translation>
    </message>
    <message>
        <source>Du&amp;plicate</source>
        <translation>&amp;Verdoppeln</translation>
    </message>
    <message>
        <source>&amp;Join</source>
        <translation>Ver&amp;binden</translation>
    </message>
    <message>
        <source>Indent by &amp;Blocks</source>
        <translation>&amp;Nach Blöcken einrücken</translation>
    </message>
    <message>
        <source>Co&amp;mment</source>
        <translation>Ko&amp;mmentar</translation>
    </message>
    <message>
        <source>U&amp;ncomment</source>
        <translation>Komme&amp;ntar aufheben</translation>
    </message>
    <message>
        <source>Collapse &amp;Block</source>
        <translation>&amp;Block zuklappen</translation>
    </message>
    <message>
        <source>&amp;Expand Block</source>
        <translation>Bl&amp;ock aufklappen</translation>
    </message>
    <message>
        <source>Collap&amp;se All</source>
        <translation>Alle zukla&amp;ppen</translation>
    </message>
    <message>
        <source>E&amp;xpand All</source>
        <translation>Alle au&amp;fklappen</translation>
    </message>
    <message>
        <source>Caret &amp;Above</source>
        <translation>Schreibmarke &amp;darüber</translation>
    </message>
    <message>
        <source>Caret &amp;Below</source>
        <translation>Schreibmarke dar&amp;unter</translation>
    </message>
    <message>
        <source>&amp;Next Occurrence</source>
        <translation>&amp;Nächstes Vorkommen</translation>
    </message>
    <message>
        <source>All &amp;Occurrences</source>
        <translation>&amp;Alle Vorkommen</translation>
    </message>
    <message>
        <source>&amp;Find...</source>
        <translation>&amp;Suchen...</translation>
    </message>
    <message>
        <source>Find &amp;Next</source>
        <translation>&amp;Weitersuchen</translation>
    </message>
    <message>
        <source>Find as You &amp;Type</source>
        <translation>Beim &amp;Tippen suchen</translation>
    </message>
    <message>
        <source>&amp;Replace...</source>
        <translation>&amp;Ersetzen...</translation>
    </message>
    <message>
        <source>Find in &amp;Account...</source>
        <translation>Im &amp;Konto suchen...</translation>
    </message>
    <message>
        <source>&amp;Goto...</source>
        <translation>&amp;Gehe zu...</translation>
    </message>
    <message>
        <source>Go to &amp;Matching Word</source>
        <translation>Zum &amp;passenden Wort</translation>
    </message>
    <message>
        <source>&amp;Back</source>
        <translation>&amp;Zurück</translation>
    </message>
    <message>
        <source>Quick &amp;Open...</source>
        <translation>Schnell ö&amp;ffnen...</translation>
    </message>
    <message>
        <source>Go to &amp;Definition</source>
        <translation>Zur &amp;Definition</translation>
    </message>
    <message>
        <source>Find &amp;References</source>
        <translation>&amp;Verwendungen suchen</translation>
    </message>
    <message>
        <source>Rena&amp;me...</source>
        <translation>&amp;Umbenennen...</translation>
    </message>
    <message>
        <source>&amp;Next Problem</source>
        <translation>&amp;Nächstes Problem</translation>
    </message>
    <message>
        <source>&amp;Previous Problem</source>
        <translation>V&amp;origes Problem</translation>
    </message>
    <message>
        <source>&amp;Quick Mends...</source>
        <translation>&amp;Schnelle Abhilfen...</translation>
    </message>
    <message>
        <source>&amp;Complete Word</source>
        <translation>&amp;Wort vervollständigen</translation>
    </message>
    <message>
        <source>&amp;Suggest Words as You Type</source>
        <translation>Wörter &amp;beim Tippen vorschlagen</translation>
    </message>
    <message>
        <source>Chec&amp;k as You Type</source>
        <translation>Beim Tippen &amp;prüfen</translation>
    </message>
    <message>
        <source>&amp;Toggle</source>
        <translation>&amp;Setzen oder entfernen</translation>
    </message>
    <message>
        <source>&amp;Next</source>
        <translation>&amp;Nächstes</translation>
    </message>
    <message>
        <source>&amp;Previous</source>
        <translation>&amp;Voriges</translation>
    </message>
    <message>
        <source>&amp;Clear Bookmarks (this document)</source>
        <translation>&amp;Lesezeichen löschen (dieses Dokument)</translation>
    </message>
    <message>
        <source>Clear Bookmarks (&amp;all documents)</source>
        <translation>Lesezeichen löschen (&amp;alle Dokumente)</translation>
    </message>
    <message>
        <source>&amp;Value Mark</source>
        <translation>&amp;Wertmarke</translation>
    </message>
    <message>
        <source>&amp;SubValue Mark</source>
        <translation>&amp;Unterwertmarke</translation>
    </message>
    <message>
        <source>&amp;Tool Bar</source>
        <translation>&amp;Werkzeugleiste</translation>
    </message>
    <message>
        <source>&amp;Status Bar</source>
        <translation>&amp;Statusleiste</translation>
    </message>
    <message>
        <source>&amp;Highlight</source>
        <translation>&amp;Hervorhebung</translation>
    </message>
    <message>
        <source>Line &amp;Wrap</source>
        <translation>Zeilen&amp;umbruch</translation>
    </message>
    <message>
        <source>S&amp;plit</source>
        <translation>&amp;Teilen</translation>
    </message>
    <message>
        <source>&amp;Other Pane</source>
        <translation>&amp;Anderer Teil</translation>
    </message>
    <message>
        <source>&amp;Current Line</source>
        <translation>&amp;Aktuelle Zeile</translation>
    </message>
    <message>
        <source>&amp;Matches</source>
        <translation>&amp;Zusammengehöriges</translation>
    </message>
    <message>
        <source>C&amp;hange Bars</source>
        <translation>Ä&amp;nderungsbalken</translation>
    </message>
    <message>
        <source>&amp;Indentation Guides</source>
        <translation>&amp;Einzugslinien</translation>
    </message>
    <message>
        <source>&amp;Visible Blanks</source>
        <translation>Sichtbare &amp;Leerzeichen</translation>
    </message>
    <message>
        <source>&amp;Smooth Scrolling</source>
        <translation>&amp;Weiches Rollen</translation>
    </message>
    <message>
        <source>&amp;Results</source>
        <translation>&amp;Ergebnisse</translation>
    </message>
    <message>
        <source>Pro&amp;blems</source>
        <translation>&amp;Probleme</translation>
    </message>
    <message>
        <source>O&amp;utline</source>
        <translation>&amp;Gliederung</translation>
    </message>
    <message>
        <source>&amp;Format</source>
        <translation>&amp;Formatieren</translation>
    </message>
    <message>
        <source>&amp;Compile</source>
        <translation>&amp;Kompilieren</translation>
    </message>
    <message>
        <source>&amp;Toggle Case</source>
        <translation>&amp;Groß/klein umschalten</translation>
    </message>
    <message>
        <source>&amp;Settings...</source>
        <translation>Einste&amp;llungen...</translation>
    </message>
    <message>
        <source>&amp;Read Only</source>
        <translation>Nur &amp;lesen</translation>
    </message>
    <message>
        <source>Tile &amp;Horizontal</source>
        <translation>&amp;Untereinander</translation>
    </message>
    <message>
        <source>Tile &amp;Vertical</source>
        <translation>&amp;Nebeneinander</translation>
    </message>
    <message>
        <source>&amp;Cascade</source>
        <translation>Ü&amp;berlappend</translation>
    </message>
    <message>
        <source>&amp;Maximize</source>
        <translation>&amp;Maximieren</translation>
    </message>
    <message>
        <source>Close &amp;Others</source>
        <translation>&amp;Andere schließen</translation>
    </message>
    <message>
        <source>Close to the &amp;Right</source>
        <translation>&amp;Rechts davon schließen</translation>
    </message>
    <message>
        <source>Close &amp;All</source>
        <translation>Alle &amp;schließen</translation>
    </message>
    <message>
        <source>&amp;Topics</source>
        <translation>&amp;Themen</translation>
    </message>
    <message>
        <source>&amp;About Nib</source>
        <translation>Ü&amp;ber Nib</translation>
    </message>
    <message>
        <source>Goto</source>
        <translation>Gehe zu</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Toggle Bookmark</source>
        <translation>Lesezeichen setzen oder entfernen</translation>
    </message>
    <message>
        <source>Collapse Block</source>
        <translation>Block zuklappen</translation>
    </message>
    <message>
        <source>Collapse block</source>
        <translation>Block zuklappen</translation>
    </message>
    <message>
        <source>Expand block</source>
        <translation>Block aufklappen</translation>
    </message>
    <message>
        <source>Activate</source>
        <translation>Aktivieren</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Close Others</source>
        <translation>Andere schließen</translation>
    </message>
    <message>
        <source>Close to the Right</source>
        <translation>Rechts davon schließen</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>Minimieren</translation>
    </message>
    <message>
        <source>Maximize</source>
        <translation>Maximieren</translation>
    </message>
    <message>
        <source>Create a new document</source>
        <translation>Ein neues Dokument anlegen</translation>
    </message>
    <message>
        <source>Open existing document</source>
        <translation>Ein vorhandenes Dokument öffnen</translation>
    </message>
    <message>
        <source>Save current document</source>
        <translation>Das Dokument speichern</translation>
    </message>
    <message>
        <source>Print the current document</source>
        <translation>Das Dokument drucken</translation>
    </message>
    <message>
        <source>Undo last editing operation</source>
        <translation>Die letzte Änderung zurücknehmen</translation>
    </message>
    <message>
        <source>Redo last editing operation</source>
        <translation>Die letzte Änderung wiederherstellen</translation>
    </message>
    <message>
        <source>Cut</source>
        <translation>Ausschneiden</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Einfügen</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <source>Comment selected lines</source>
        <translation>Ausgewählte Zeilen zu Kommentar machen</translation>
    </message>
    <message>
        <source>Uncomment selected lines</source>
        <translation>Kommentarzeichen ausgewählter Zeilen entfernen</translation>
    </message>
    <message>
        <source>&amp;Fine</source>
        <translation>&amp;Suchen</translation>
    </message>
    <message>
        <source>Search for text in document (press F3 to find next)</source>
        <translation>Text im Dokument suchen (weiter mit F3)</translation>
    </message>
    <message>
        <source>Navigate backward</source>
        <translation>Zurückgehen</translation>
    </message>
    <message>
        <source>Navigate forward</source>
        <translation>Vorgehen</translation>
    </message>
    <message>
        <source>Toggles case of selected text (upper, lower, mixed)</source>
        <translation>Schaltet den ausgewählten Text um (groß, klein, gemischt)</translation>
    </message>
    <message>
        <source>Format code</source>
        <translation>Programm formatieren</translation>
    </message>
    <message>
        <source>Compile code</source>
        <translation>Programm kompilieren</translation>
    </message>
    <message>
        <source>Server status</source>
        <translation>Zustand des Servers</translation>
    </message>
    <message>
        <source>Starting up</source>
        <translation>Startet</translation>
    </message>
    <message>
        <source>Current insertion point</source>
        <translation>Schreibstelle</translation>
    </message>
    <message>
        <source>Overwrite / Insert</source>
        <translation>Überschreiben / Einfügen</translation>
    </message>
    <message>
        <source>Ovr</source>
        <translation>Übr</translation>
    </message>
    <message>
        <source>Ins</source>
        <translation>Einf</translation>
    </message>
    <message>
        <source>Location</source>
        <translation>Ort</translation>
    </message>
    <message>
        <source>Host</source>
        <translation>Host</translation>
    </message>
    <message>
        <source>Account</source>
        <translation>Konto</translation>
    </message>
    <message>
        <source>File name</source>
        <translation>Dateiname</translation>
    </message>
    <message>
        <source>Item ID</source>
        <translation>Item-Id</translation>
    </message>
    <message>
        <source>Modified</source>
        <translation>Geändert</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Lines</source>
        <translation>Zeilen</translation>
    </message>
    <message>
        <source>Selection size</source>
        <translation>Größe der Auswahl</translation>
    </message>
    <message>
        <source>Selected lines</source>
        <translation>Zeilen der Auswahl</translation>
    </message>
    <message>
        <source>Stored size</source>
        <translation>Gespeicherte Größe</translation>
    </message>
    <message>
        <source>Lock</source>
        <translation>Sperre</translation>
    </message>
    <message>
        <source>yes</source>
        <translation>ja</translation>
    </message>
    <message>
        <source>no</source>
        <translation>nein</translation>
    </message>
    <message>
        <source>&amp;General</source>
        <translation>All&amp;gemein</translation>
    </message>
    <message>
        <source>&amp;Language Keywords</source>
        <translation>&amp;Sprachwörter</translation>
    </message>
    <message>
        <source>&amp;User Keywords</source>
        <translation>&amp;Eigene Wörter</translation>
    </message>
    <message>
        <source>† Setting was loaded from the NIB configuration file on the host.  Changes to this setting will not be saved.</source>
        <translation>† Diese Einstellung kommt aus der NIB-Konfiguration des Hosts. Änderungen daran werden nicht gespeichert.</translation>
    </message>
    <message>
        <source>&amp;Load keywords and settings from host NIB configuration file when possible</source>
        <translation>Schlüsse&amp;lwörter und Einstellungen möglichst aus der NIB-Konfiguration des Hosts laden</translation>
    </message>
    <message>
        <source>Recent &amp;files:</source>
        <translation>&amp;Zuletzt geöffnete Dateien:</translation>
    </message>
    <message>
        <source>Di&amp;alect of programs:</source>
        <translation>&amp;Dialekt der Programme:</translation>
    </message>
    <message>
        <source>Enable line &amp;wrapping</source>
        <translation>Zeilen &amp;umbrechen</translation>
    </message>
    <message>
        <source>Enable &amp;BASIC syntax highlighting</source>
        <translation>&amp;BASIC-Syntax hervorheben</translation>
    </message>
    <message>
        <source>Automatic document recover&amp;y</source>
        <translation>Dokumente automatisch &amp;retten</translation>
    </message>
    <message>
        <source>Reopen &amp;documents at start</source>
        <translation>Dokumente beim Start wieder ö&amp;ffnen</translation>
    </message>
    <message>
        <source>Use color when &amp;printing</source>
        <translation>In F&amp;arbe drucken</translation>
    </message>
    <message>
        <source>Use &amp;record locking when reading from host database</source>
        <translation>Sätze beim Lesen vom Host s&amp;perren</translation>
    </message>
    <message>
        <source>&amp;Only list &amp;monospaced fonts</source>
        <translation>Nur Schriften fester Bre&amp;ite zeigen</translation>
    </message>
    <message>
        <source>&amp;Select font...</source>
        <translation>Schrift w&amp;ählen...</translation>
    </message>
    <message>
        <source>Show large &amp;icons on toolbar</source>
        <translation>Große S&amp;ymbole in der Werkzeugleiste</translation>
    </message>
    <message>
        <source>Show document min, ma&amp;x &amp;&amp; close buttons </source>
        <translation>&amp;Minimieren, Maximieren, Schließen zeigen </translation>
    </message>
    <message>
        <source>Enable collapsible code bloc&amp;ks</source>
        <translation>Bl&amp;öcke zuklappbar machen</translation>
    </message>
    <message>
        <source>&amp;Case sensitive keywords</source>
        <translation>Groß-/&amp;Kleinschreibung beachten</translation>
    </message>
    <message>
        <source>At &amp;end of document:</source>
        <translation>Am En&amp;de des Dokuments:</translation>
    </message>
    <message>
        <source>&amp;Command</source>
        <translation>&amp;Befehl</translation>
    </message>
    <message>
        <source>&amp;Options</source>
        <translation>&amp;Optionen</translation>
    </message>
    <message>
        <source>&amp;After a clean compile</source>
        <translation>&amp;Nach einem Lauf ohne Fehler</translation>
    </message>
    <message>
        <source>Tab &amp;size</source>
        <translation>&amp;Tabulatorbreite</translation>
    </message>
    <message>
        <source>&amp;Margin</source>
        <translation>&amp;Rand</translation>
    </message>
    <message>
        <source>  *  comment line &amp;indent</source>
        <translation>  *  Kommentarzeilen e&amp;inrücken</translation>
    </message>
    <message>
        <source>  !  comment li&amp;ne indent</source>
        <translation>  !  Kommentarzeilen einrüc&amp;ken</translation>
    </message>
    <message>
        <source>&amp;Prefix character</source>
        <translation>&amp;Präfixzeichen</translation>
    </message>
    <message>
        <source>&amp;user-defined comment line indent</source>
        <translation>eigene Kommentarzeilen einr&amp;ücken</translation>
    </message>
    <message>
        <source>Defined key&amp;words:</source>
        <translation>&amp;Definierte Schlüsselwörter:</translation>
    </message>
    <message>
        <source>&amp;Keyword:</source>
        <translation>Sch&amp;lüsselwort:</translation>
    </message>
    <message>
        <source>&amp;Add keyword</source>
        <translation>Schlüsselwort hin&amp;zufügen</translation>
    </message>
    <message>
        <source>&amp;Delete keyword</source>
        <translation>Schlüsselwort l&amp;öschen</translation>
    </message>
    <message>
        <source>&amp;Import keyword list...</source>
        <translation>Schlüsselwörter &amp;importieren...</translation>
    </message>
    <message>
        <source>E&amp;xport keyword list...</source>
        <translation>Schlüsselwörter ex&amp;portieren...</translation>
    </message>
    <message>
        <source>&amp;None</source>
        <translation>Kei&amp;ne</translation>
    </message>
    <message>
        <source>&amp;Begin block indent if keyword found:</source>
        <translation>Block&amp;beginn, wenn das Schlüsselwort steht:</translation>
    </message>
    <message>
        <source>anywhere &amp;in line</source>
        <translation>irgendw&amp;o in der Zeile</translation>
    </message>
    <message>
        <source>at beginning &amp;of line</source>
        <translation>am Zeilen&amp;anfang</translation>
    </message>
    <message>
        <source>at end of &amp;line</source>
        <translation>a&amp;m Zeilenende</translation>
    </message>
    <message>
        <source>&amp;End block indent</source>
        <translation>Blo&amp;ckende</translation>
    </message>
    <message>
        <source>&amp;Mid block indent</source>
        <translation>Blockmi&amp;tte</translation>
    </message>
    <message>
        <source>Reset Default Colors</source>
        <translation>Farben zurücksetzen</translation>
    </message>
    <message>
        <source>Prompt</source>
        <translation>Fragen</translation>
    </message>
    <message>
        <source>Wrap and beep</source>
        <translation>Von vorn mit Ton</translation>
    </message>
    <message>
        <source>Wrap silently</source>
        <translation>Von vorn ohne Ton</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keine</translation>
    </message>
    <message>
        <source>Margin</source>
        <translation>Rand</translation>
    </message>
    <message>
        <source>Code</source>
        <translation>Code</translation>
    </message>
    <message>
        <source>Background color</source>
        <translation>Hintergrund</translation>
    </message>
    <message>
        <source>Normal text</source>
        <translation>Normaler Text</translation>
    </message>
    <message>
        <source>Language keyword</source>
        <translation>Wort der Sprache</translation>
    </message>
    <message>
        <source>Comment</source>
        <translation>Kommentar</translation>
    </message>
    <message>
        <source>String</source>
        <translation>Zeichenkette</translation>
    </message>
    <message>
        <source>Label</source>
        <translation>Marke</translation>
    </message>
    <message>
        <source>User keyword</source>
        <translation>Eigenes Wort</translation>
    </message>
    <message>
        <source>Statement</source>
        <translation>Anweisung</translation>
    </message>
    <message>
        <source>Function</source>
        <translation>Funktion</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>Zahl</translation>
    </message>
    <message>
        <source>Standard Colors</source>
        <translation>Standardfarben</translation>
    </message>
    <message>
        <source>System Colors</source>
        <translation>Systemfarben</translation>
    </message>
    <message>
        <source>Custom Color &gt;&gt;</source>
        <translation>Eigene Farbe &gt;&gt;</translation>
    </message>
    <message>
        <source>Black</source>
        <translation>Schwarz</translation>
    </message>
    <message>
        <source>Dark Blue</source>
        <translation>Dunkelblau</translation>
    </message>
    <message>
        <source>Dark Green</source>
        <translation>Dunkelgrün</translation>
    </message>
    <message>
        <source>Turquoise</source>
        <translation>Türkis</translation>
    </message>
    <message>
        <source>Dark Red</source>
        <translation>Dunkelrot</translation>
    </message>
    <message>
        <source>Purple</source>
        <translation>Violett</translation>
    </message>
    <message>
        <source>Olive</source>
        <translation>Oliv</translation>
    </message>
    <message>
        <source>Light Gray</source>
        <translation>Hellgrau</translation>
    </message>
    <message>
        <source>Dark Gray</source>
        <translation>Dunkelgrau</translation>
    </message>
    <message>
        <source>Blue</source>
        <translation>Blau</translation>
    </message>
    <message>
        <source>Green</source>
        <translation>Grün</translation>
    </message>
    <message>
        <source>Cyan</source>
        <translation>Cyan</translation>
    </message>
    <message>
        <source>Red</source>
        <translation>Rot</translation>
    </message>
    <message>
        <source>Magenta</source>
        <translation>Magenta</translation>
    </message>
    <message>
        <source>Yellow</source>
        <translation>Gelb</translation>
    </message>
    <message>
        <source>White</source>
        <translation>Weiß</translation>
    </message>
    <message>
        <source>3D Dark Shadow</source>
        <translation>3D dunkler Schatten</translation>
    </message>
    <message>
        <source>3D Face</source>
        <translation>3D Fläche</translation>
    </message>
    <message>
        <source>3D Highlight</source>
        <translation>3D Glanz</translation>
    </message>
    <message>
        <source>3D Light</source>
        <translation>3D Licht</translation>
    </message>
    <message>
        <source>3D Shadow</source>
        <translation>3D Schatten</translation>
    </message>
    <message>
        <source>Active Border</source>
        <translation>Aktiver Rahmen</translation>
    </message>
    <message>
        <source>Active Caption Background</source>
        <translation>Aktiver Titel, Hintergrund</translation>
    </message>
    <message>
        <source>Active Caption Text</source>
        <translation>Aktiver Titel, Text</translation>
    </message>
    <message>
        <source>Alternate Button Face</source>
        <translation>Andere Knopffläche</translation>
    </message>
    <message>
        <source>Application Workspace</source>
        <translation>Arbeitsfläche</translation>
    </message>
    <message>
        <source>Button Text</source>
        <translation>Knopftext</translation>
    </message>
    <message>
        <source>Desktop Background</source>
        <translation>Desktophintergrund</translation>
    </message>
    <message>
        <source>Gradient Active Caption</source>
        <translation>Aktiver Titel, Verlauf</translation>
    </message>
    <message>
        <source>Gradient Inactive Caption</source>
        <translation>Inaktiver Titel, Verlauf</translation>
    </message>
    <message>
        <source>Gray Text</source>
        <translation>Grauer Text</translation>
    </message>
    <message>
        <source>Hotlight</source>
        <translation>Verweis</translation>
    </message>
    <message>
        <source>Inactive Border</source>
        <translation>Inaktiver Rahmen</translation>
    </message>
    <message>
        <source>Inactive Caption Background</source>
        <translation>Inaktiver Titel, Hintergrund</translation>
    </message>
    <message>
        <source>Inactive Caption Text</source>
        <translation>Inaktiver Titel, Text</translation>
    </message>
    <message>
        <source>Menu Background</source>
        <translation>Menühintergrund</translation>
    </message>
    <message>
        <source>Menu Bar Background</source>
        <translation>Menüleiste, Hintergrund</translation>
    </message>
    <message>
        <source>Menu Highlight</source>
        <translation>Menüauswahl</translation>
    </message>
    <message>
        <source>Menu Text</source>
        <translation>Menütext</translation>
    </message>
    <message>
        <source>Scrollbar</source>
        <translation>Bildlaufleiste</translation>
    </message>
    <message>
        <source>Selected Item Background</source>
        <translation>Auswahl, Hintergrund</translation>
    </message>
    <message>
        <source>Selected Item Text</source>
        <translation>Auswahl, Text</translation>
    </message>
    <message>
        <source>Tooltip Background</source>
        <translation>Tipp, Hintergrund</translation>
    </message>
    <message>
        <source>Tooltip Text</source>
        <translation>Tipp, Text</translation>
    </message>
    <message>
        <source>Window Background</source>
        <translation>Fensterhintergrund</translation>
    </message>
    <message>
        <source>Window Frame</source>
        <translation>Fensterrahmen</translation>
    </message>
    <message>
        <source>Window Text</source>
        <translation>Fenstertext</translation>
    </message>
    <message>
        <source>Find</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Replace</source>
        <translation>Ersetzen</translation>
    </message>
    <message>
        <source>For&amp;ward</source>
        <translation>&amp;Vor</translation>
    </message>
    <message>
        <source>Reop&amp;en Closed</source>
        <translation>&amp;Geschlossenes wieder öffnen</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>Import</source>
        <translation>Importieren</translation>
    </message>
    <message>
        <source>Export</source>
        <translation>Exportieren</translation>
    </message>
    <message>
        <source>&amp;Authors</source>
        <translation>A&amp;utoren</translation>
    </message>
    <message>
        <source>Histor&amp;y</source>
        <translation>&amp;Verlauf</translation>
    </message>
    <message>
        <source>as stored</source>
        <translation>wie gespeichert</translation>
    </message>
    <message>
        <source>as opened or saved</source>
        <translation>wie geöffnet oder gesichert</translation>
    </message>
    <message>
        <source>last commit</source>
        <translation>letzter Commit</translation>
    </message>
    <message>
        <source>deleted</source>
        <translation>gelöscht</translation>
    </message>
    <message>
        <source>not stored yet</source>
        <translation>noch nicht gespeichert</translation>
    </message>
    <message>
        <source>as recovered</source>
        <translation>wie wiederhergestellt</translation>
    </message>
    <message>
        <source>as it was before a save that was cut short</source>
        <translation>wie vor dem abgebrochenen Speichern</translation>
    </message>
    <message>
        <source>Com&amp;pare</source>
        <translation>&amp;Vergleichen</translation>
    </message>
    <message>
        <source>With the &amp;Stored Item</source>
        <translation>Mit dem ge&amp;speicherten Item</translation>
    </message>
    <message>
        <source>With the Text as &amp;Opened</source>
        <translation>Mit dem Text beim Ö&amp;ffnen</translation>
    </message>
    <message>
        <source>With the Last &amp;Commit</source>
        <translation>Mit dem letzten &amp;Commit</translation>
    </message>
    <message>
        <source>With an Open &amp;Document...</source>
        <translation>Mit einem offenen &amp;Dokument...</translation>
    </message>
    <message>
        <source>With Another &amp;Item or File...</source>
        <translation>Mit einem anderen &amp;Item oder einer Datei...</translation>
    </message>
    <message>
        <source>&amp;Merge</source>
        <translation>&amp;Zusammenführen</translation>
    </message>
    <message>
        <source>this program</source>
        <translation>dieses Programm</translation>
    </message>
    <message>
        <source>Local files</source>
        <translation>Lokale Dateien</translation>
    </message>
    <message>
        <source>Record as &amp;Grid</source>
        <translation>&amp;Datensatz als Tabelle</translation>
    </message>
    <message>
        <source>&amp;Days to keep versions, 0: all</source>
        <translation>Tage für &amp;Fassungen, 0: alle</translation>
    </message>
    <message>
        <source>Mega&amp;bytes, 0: any</source>
        <translation>&amp;Megabyte, 0: beliebig</translation>
    </message>
    <message>
        <source>Getting started</source>
        <translation>Einstieg</translation>
    </message>
    <message>
        <source>Working with text</source>
        <translation>Arbeiten mit Texten</translation>
    </message>
    <message>
        <source>Working with programs</source>
        <translation>Arbeiten mit Programmen</translation>
    </message>
    <message>
        <source>Reference</source>
        <translation>Nachschlagen</translation>
    </message>
</context>
<context>
    <name>MergeLooks</name>
    <message>
        <source>Unchanged</source>
        <translation>Unverändert</translation>
    </message>
    <message>
        <source>Theirs</source>
        <translation>Fremd</translation>
    </message>
    <message>
        <source>Mine</source>
        <translation>Eigen</translation>
    </message>
    <message>
        <source>Both alike</source>
        <translation>Beide gleich</translation>
    </message>
    <message>
        <source>Conflict</source>
        <translation>Konflikt</translation>
    </message>
    <message>
        <source>nothing is chosen yet</source>
        <translation>noch nichts gewählt</translation>
    </message>
    <message>
        <source>theirs is taken</source>
        <translation>Fremdes gewählt</translation>
    </message>
    <message>
        <source>mine is taken</source>
        <translation>Eigenes gewählt</translation>
    </message>
    <message>
        <source>theirs is taken, then mine</source>
        <translation>Fremdes, dann Eigenes gewählt</translation>
    </message>
    <message>
        <source>mine is taken, then theirs</source>
        <translation>Eigenes, dann Fremdes gewählt</translation>
    </message>
    <message>
        <source>neither is taken</source>
        <translation>keines von beiden gewählt</translation>
    </message>
    <message>
        <source>%1 lines are the same</source>
        <translation>%1 gleiche Zeilen</translation>
    </message>
</context>
<context>
    <name>Message</name>
    <message>
        <source>Ln %1, Col %2</source>
        <translation>Z %1, Sp %2</translation>
    </message>
    <message>
        <source>The following error has occurred:
%9</source>
        <translation>Es ist ein Fehler aufgetreten:
%9</translation>
    </message>
    <message>
        <source>Save changes to %1 ?</source>
        <translation>Änderungen an %1 speichern?</translation>
    </message>
    <message>
        <source>Item %1 does not exist. Create new item?</source>
        <translation>Das Item %1 gibt es nicht. Neu anlegen?</translation>
    </message>
    <message>
        <source>Item %1 does not exist. Create new item?
Its folder is %2.</source>
        <translation>Das Item %1 gibt es nicht. Neu anlegen?
Der Ordner ist %2.</translation>
    </message>
    <message>
        <source>Item %1 does not exist. Create new item?
Its folder %2 does not exist either, so the item cannot be saved there.</source>
        <translation>Das Item %1 gibt es nicht. Neu anlegen?
Auch den Ordner %2 gibt es nicht, das Item lässt sich dort nicht speichern.</translation>
    </message>
    <message>
        <source>%1 is open in another window. Open in &quot;read only&quot; mode instead?</source>
        <translation>%1 ist in einem anderen Fenster offen. Stattdessen nur zum Lesen öffnen?</translation>
    </message>
    <message>
        <source>%1 is locked by another user or process. Open in &quot;read only&quot; mode instead?</source>
        <translation>%1 ist von einem anderen Benutzer oder Prozess gesperrt. Stattdessen nur zum Lesen öffnen?</translation>
    </message>
    <message>
        <source>%1 is locked by another user or process. Open in &quot;read only&quot; mode instead?
It is held by %7.</source>
        <translation>%1 ist von einem anderen Benutzer oder Prozess gesperrt. Stattdessen nur zum Lesen öffnen?
Die Sperre hält %7.</translation>
    </message>
    <message>
        <source>%1 is locked by another user or process.</source>
        <translation>%1 ist von einem anderen Benutzer oder Prozess gesperrt.</translation>
    </message>
    <message>
        <source>Item %1 is &quot;read only&quot;. Open in read-only mode?</source>
        <translation>Das Item %1 darf nur gelesen werden. Zum Lesen öffnen?</translation>
    </message>
    <message>
        <source>Unable to open item %1 because no file is named for it.</source>
        <translation>Das Item %1 lässt sich nicht öffnen: Es ist keine Datei dafür genannt.</translation>
    </message>
    <message>
        <source>Unable to open item %1 because it appears to be a folder or file definition.</source>
        <translation>Das Item %1 lässt sich nicht öffnen: Es ist wohl ein Ordner oder eine Dateidefinition.</translation>
    </message>
    <message>
        <source>Cannot save document - file name and/or item ID missing!</source>
        <translation>Das Dokument lässt sich nicht speichern - Dateiname oder Item-Id fehlt!</translation>
    </message>
    <message>
        <source>Cannot save %1 - document is read-only!</source>
        <translation>%1 lässt sich nicht speichern - das Dokument ist schreibgeschützt!</translation>
    </message>
    <message>
        <source>Item &apos;%1&apos; is open in read-only mode. Please save using a different name.</source>
        <translation>Das Item &apos;%1&apos; ist nur zum Lesen offen. Bitte unter einem anderen Namen speichern.</translation>
    </message>
    <message>
        <source>Item &apos;%1&apos; may only be read. Please save using a different name.</source>
        <translation>Das Item &apos;%1&apos; darf nur gelesen werden. Bitte unter einem anderen Namen speichern.</translation>
    </message>
    <message>
        <source>&apos;%1&apos; appears to be a file or folder and cannot be overwritten!</source>
        <translation>&apos;%1&apos; ist wohl eine Datei oder ein Ordner und kann nicht überschrieben werden!</translation>
    </message>
    <message>
        <source>Item &apos;%1&apos; exists and cannot be overwritten. Please save using a different name.</source>
        <translation>Das Item &apos;%1&apos; gibt es schon, und es kann nicht überschrieben werden. Bitte unter einem anderen Namen speichern.</translation>
    </message>
    <message>
        <source>Item &apos;%1&apos; exists. Overwrite?</source>
        <translation>Das Item &apos;%1&apos; gibt es schon. Überschreiben?</translation>
    </message>
    <message>
        <source>Item &apos;%1&apos; is currently locked and cannot be updated!</source>
        <translation>Das Item &apos;%1&apos; ist gesperrt und kann nicht geändert werden!</translation>
    </message>
    <message>
        <source>Item &apos;%1&apos; is currently locked and cannot be updated!
It is held by %7.</source>
        <translation>Das Item &apos;%1&apos; ist gesperrt und kann nicht geändert werden!
Die Sperre hält %7.</translation>
    </message>
    <message>
        <source>%1 was changed by another program since it was opened.

Reload takes what is stored now, Keep stays with the text in the window, Compare lists what differs.</source>
        <translation>%1 wurde von einem anderen Programm geändert, seit es geöffnet wurde.

„Neu laden“ nimmt, was jetzt gespeichert ist, „Behalten“ bleibt beim Text im Fenster, „Vergleichen“ zeigt die Unterschiede.</translation>
    </message>
    <message>
        <source>%1 was changed by another program since it was opened.

Reload takes what is stored now, Keep stays with the text in the window, Compare lists what differs. It has unsaved changes: after Reload they are lost unless you undo it.</source>
        <translation>%1 wurde von einem anderen Programm geändert, seit es geöffnet wurde.

„Neu laden“ nimmt, was jetzt gespeichert ist, „Behalten“ bleibt beim Text im Fenster, „Vergleichen“ zeigt die Unterschiede. Es hat ungespeicherte Änderungen: Nach „Neu laden“ sind sie verloren, wenn Sie es nicht rückgängig machen.</translation>
    </message>
    <message>
        <source>%1 is not there any more: another program has deleted or renamed it. Keep leaves its text open, to be saved again; Close asks about that first.</source>
        <translation>%1 gibt es nicht mehr: Ein anderes Programm hat es gelöscht oder umbenannt. „Behalten“ lässt den Text offen, damit er wieder gespeichert werden kann; „Schließen“ fragt vorher danach.</translation>
    </message>
    <message>
        <source>%1 was changed by another program since it was opened. Save it again to replace it.</source>
        <translation>%1 wurde von einem anderen Programm geändert, seit es geöffnet wurde. Noch einmal speichern, um es zu ersetzen.</translation>
    </message>
    <message>
        <source>%1 was deleted by another program since it was opened. Save it again to make it anew.</source>
        <translation>%1 wurde von einem anderen Programm gelöscht, seit es geöffnet wurde. Noch einmal speichern, um es neu anzulegen.</translation>
    </message>
    <message>
        <source>%1 was created by another program since it was opened. Save it again to replace it.</source>
        <translation>%1 wurde von einem anderen Programm angelegt, seit es geöffnet wurde. Noch einmal speichern, um es zu ersetzen.</translation>
    </message>
    <message>
        <source>%1 is read-only. Save it under another name to change it.</source>
        <translation>%1 ist schreibgeschützt. Unter einem anderen Namen speichern, um es zu ändern.</translation>
    </message>
    <message>
        <source>Document %1 is read-only and cannot be saved. Continue with next document?</source>
        <translation>Das Dokument %1 ist schreibgeschützt und lässt sich nicht speichern. Mit dem nächsten fortfahren?</translation>
    </message>
    <message>
        <source>Program has not been saved. Do you want
to save the file, then compile the program?</source>
        <translation>Das Programm ist nicht gespeichert.
Speichern und dann kompilieren?</translation>
    </message>
    <message>
        <source>Unable to compile un-saved document! Use Save-As from the File menu to save the document, then compile it.</source>
        <translation>Ein ungespeichertes Dokument lässt sich nicht kompilieren! Bitte erst mit „Speichern unter“ aus dem Menü Datei speichern.</translation>
    </message>
    <message>
        <source>Unable to compile document saved as a local file!</source>
        <translation>Ein Dokument, das eine lokale Datei ist, lässt sich nicht kompilieren!</translation>
    </message>
    <message>
        <source>Unable to compile un-saved document! Do you want to save the document, then compile it?</source>
        <translation>Ein ungespeichertes Dokument lässt sich nicht kompilieren! Speichern und dann kompilieren?</translation>
    </message>
    <message>
        <source>Host does not allow Nib to EXECUTE any utilities. Please enable this feature!</source>
        <translation>Der Host erlaubt Nib kein EXECUTE. Bitte schalten Sie es frei!</translation>
    </message>
    <message>
        <source>Target label not found!</source>
        <translation>Die Sprungmarke ist nicht zu finden!</translation>
    </message>
    <message>
        <source>No document is open.</source>
        <translation>Es ist kein Dokument offen.</translation>
    </message>
    <message>
        <source>No more occurrences of search text found.</source>
        <translation>Kein weiteres Vorkommen des Suchtextes gefunden.</translation>
    </message>
    <message>
        <source>Search text not found in selection.</source>
        <translation>Der Suchtext kommt in der Auswahl nicht vor.</translation>
    </message>
    <message>
        <source>Search text not found in any document.</source>
        <translation>Der Suchtext kommt in keinem Dokument vor.</translation>
    </message>
    <message>
        <source>Search text not found in document.</source>
        <translation>Der Suchtext kommt im Dokument nicht vor.</translation>
    </message>
    <message>
        <source>Searched past end of document</source>
        <translation>Über das Ende des Dokuments hinaus gesucht</translation>
    </message>
    <message>
        <source>Search has reached the end of the document. Do you want to continue searching at the beginning?</source>
        <translation>Die Suche hat das Ende des Dokuments erreicht. Am Anfang weitersuchen?</translation>
    </message>
    <message>
        <source>Search has reached the beginning of the document. Do you want to continue searching at the end?</source>
        <translation>Die Suche hat den Anfang des Dokuments erreicht. Am Ende weitersuchen?</translation>
    </message>
    <message>
        <source>One occurrence found and bookmarked.</source>
        <translation>Ein Vorkommen gefunden und mit einem Lesezeichen versehen.</translation>
    </message>
    <message>
        <source>%1 occurrences found and bookmarked.</source>
        <translation>%1 Vorkommen gefunden und mit Lesezeichen versehen.</translation>
    </message>
    <message>
        <source>%1 occurrences replaced.</source>
        <translation>%1 Vorkommen ersetzt.</translation>
    </message>
    <message>
        <source>You must restart Nib for he new &quot;host Nib configuration&quot; setting to take effect.</source>
        <translation>Die neue Einstellung zur NIB-Konfiguration des Hosts gilt erst nach einem Neustart von Nib.</translation>
    </message>
    <message>
        <source>The &quot;min, max, close&quot; setting cannot be changed while any documents are open. Please close all documents and try again.</source>
        <translation>Die Einstellung der Fensterknöpfe lässt sich nicht ändern, solange Dokumente offen sind. Bitte alle Dokumente schließen und noch einmal versuchen.</translation>
    </message>
    <message>
        <source>Keyword may not contain a comma, semicolon or parenthesis!</source>
        <translation>Ein Schlüsselwort darf kein Komma, kein Semikolon und keine Klammer enthalten!</translation>
    </message>
    <message>
        <source>Keyword &apos;%1&apos; contains an unexpected character: %2
Are you sure you want to add this keyword?</source>
        <translation>Das Schlüsselwort &apos;%1&apos; enthält ein unerwartetes Zeichen: %2
Trotzdem hinzufügen?</translation>
    </message>
    <message>
        <source>Are you sure you want to delete the recoverable copy of this document?

Once the recoverable copies are deleted, they can no longer be retrieved.</source>
        <translation>Die Sicherung dieses Dokuments wirklich löschen?

Sind die Sicherungen gelöscht, lassen sie sich nicht mehr wiederherstellen.</translation>
    </message>
    <message>
        <source>Are you sure you want to delete the recoverable copies of these %1 documents?

Once the recoverable copies are deleted, they can no longer be retrieved.</source>
        <translation>Die Sicherungen dieser %1 Dokumente wirklich löschen?

Sind die Sicherungen gelöscht, lassen sie sich nicht mehr wiederherstellen.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not the path of an item or a file.</source>
        <translation>&quot;%1&quot; ist kein Pfad eines Items oder einer Datei.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; does not exist.</source>
        <translation>&quot;%1&quot; gibt es nicht.</translation>
    </message>
    <message>
        <source>File %1 does not exist in account %2.</source>
        <translation>Die Datei %1 gibt es im Konto %2 nicht.</translation>
    </message>
    <message>
        <source>Account %1 does not exist on %2.</source>
        <translation>Das Konto %1 gibt es auf %2 nicht.</translation>
    </message>
    <message>
        <source>%1 bytes</source>
        <translation>%1 Bytes</translation>
    </message>
    <message>
        <source>%8 (standard color) %1</source>
        <translation>%8 (Standardfarbe) %1</translation>
    </message>
    <message>
        <source>%8 (system color) %1</source>
        <translation>%8 (Systemfarbe) %1</translation>
    </message>
    <message>
        <source>custom color: %1</source>
        <translation>eigene Farbe: %1</translation>
    </message>
    <message>
        <source>unknown system color %1</source>
        <translation>unbekannte Systemfarbe %1</translation>
    </message>
    <message>
        <source>%1 has not been saved yet.</source>
        <translation>%1 wurde noch nicht gespeichert.</translation>
    </message>
    <message>
        <source>%1 is in no commit.</source>
        <translation>%1 ist in keinem Commit.</translation>
    </message>
    <message>
        <source>It is not known any more how %1 was opened.</source>
        <translation>Es ist nicht mehr bekannt, wie %1 geöffnet wurde.</translation>
    </message>
    <message>
        <source>The recoverable copy of %1 cannot be read.</source>
        <translation>Die Sicherung von %1 kann nicht gelesen werden.</translation>
    </message>
    <message>
        <source>The recoverable copy of %1 cannot be deleted.</source>
        <translation>Die Sicherung von %1 kann nicht gelöscht werden.</translation>
    </message>
    <message>
        <source>%1 was changed by another program since it was opened.

Reload takes what is stored now, Keep stays with the text in the window, Compare lists what differs. It has unsaved changes: after Reload they are lost unless you undo it. Merge brings theirs and yours together, and stores nothing yet.</source>
        <translation>%1 wurde von einem anderen Programm geändert, seit es geöffnet wurde.

„Neu laden“ nimmt, was jetzt gespeichert ist, „Behalten“ bleibt beim Text im Fenster, „Vergleichen“ zeigt die Unterschiede. Es hat ungespeicherte Änderungen: Nach „Neu laden“ sind sie verloren, wenn Sie es nicht rückgängig machen. „Zusammenführen“ vereint das Fremde mit dem Eigenen und speichert noch nichts.</translation>
    </message>
    <message>
        <source>%1 was changed once more meanwhile. This is the merge with what is stored now.</source>
        <translation>%1 wurde inzwischen noch einmal geändert. Hier wird zusammengeführt, was jetzt gespeichert ist.</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is no date such as %2.</source>
        <translation>„%1“ ist kein Datum wie %2.</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is no time such as %2.</source>
        <translation>„%1“ ist keine Uhrzeit wie %2.</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is no number.</source>
        <translation>„%1“ ist keine Zahl.</translation>
    </message>
    <message>
        <source>&apos;%1&apos; has more than %2 decimal places.</source>
        <translation>„%1“ hat mehr als %2 Nachkommastellen.</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is not of the form %2.</source>
        <translation>„%1“ hat nicht die Form %2.</translation>
    </message>
    <message>
        <source>Only a part of this value is shown, by %1. It can be changed in the text.</source>
        <translation>Von diesem Wert ist nur ein Teil zu sehen, durch %1. Im Text kann er geändert werden.</translation>
    </message>
    <message>
        <source>A value can hold neither line breaks nor marks that end it.</source>
        <translation>Ein Wert kann weder Zeilenumbrüche noch Marken enthalten, die ihn beenden.</translation>
    </message>
    <message>
        <source>This record is too large for a grid.</source>
        <translation>Dieser Datensatz ist zu groß für eine Tabelle.</translation>
    </message>
    <message>
        <source>This value holds the sign of a mark as a character. It can be changed in the text.</source>
        <translation>Dieser Wert enthält das Zeichen für eine Marke als Buchstaben. Er kann im Text geändert werden.</translation>
    </message>
    <message>
        <source>Search Results</source>
        <translation>Suchergebnisse</translation>
    </message>
    <message>
        <source>Replaced in Account</source>
        <translation>Im Konto ersetzt</translation>
    </message>
    <message>
        <source>Definitions of %1</source>
        <translation>Definitionen von %1</translation>
    </message>
    <message>
        <source>References to %1</source>
        <translation>Verwendungen von %1</translation>
    </message>
    <message>
        <source>What differs: - in the window, + stored</source>
        <translation>Was sich unterscheidet: - im Fenster, + gespeichert</translation>
    </message>
    <message>
        <source>No line differs.</source>
        <translation>Keine Zeile unterscheidet sich.</translation>
    </message>
    <message>
        <source>(%1 lines are left out here)</source>
        <translation>(%1 Zeilen sind hier weggelassen)</translation>
    </message>
    <message>
        <source>The list ends here: hits in more than %1 lines are counted only.</source>
        <translation>Die Liste endet hier: Treffer in mehr als %1 Zeilen werden nur gezählt.</translation>
    </message>
    <message>
        <source>Stopped.</source>
        <translation>Abgebrochen.</translation>
    </message>
    <message>
        <source>Hits: %1. Items with hits: %2 of %3. Files: %4. Time: %5.</source>
        <translation>Treffer: %1. Items mit Treffern: %2 von %3. Dateien: %4. Zeit: %5.</translation>
    </message>
    <message>
        <source>Skipped because they are no texts: %1.</source>
        <translation>Übergangen, weil sie keine Texte sind: %1.</translation>
    </message>
    <message>
        <source>Not readable: %1.</source>
        <translation>Nicht lesbar: %1.</translation>
    </message>
    <message>
        <source>Replaced: %1. Items changed: %2. Items not changed: %3.</source>
        <translation>Ersetzt: %1. Geänderte Items: %2. Nicht geänderte Items: %3.</translation>
    </message>
    <message>
        <source>Stopped before these items: %1.</source>
        <translation>Abgebrochen vor diesen Items: %1.</translation>
    </message>
    <message>
        <source>Not changed: the text is not in it any more.</source>
        <translation>Nicht geändert: Der Text steht nicht mehr darin.</translation>
    </message>
    <message>
        <source>Not changed: it is open as read-only.</source>
        <translation>Nicht geändert: Es ist nur zum Lesen offen.</translation>
    </message>
    <message>
        <source>Not changed: it is not there any more.</source>
        <translation>Nicht geändert: Es ist nicht mehr da.</translation>
    </message>
    <message>
        <source>Not changed: it is read-only.</source>
        <translation>Nicht geändert: Es darf nur gelesen werden.</translation>
    </message>
    <message>
        <source>Not changed: %9</source>
        <translation>Nicht geändert: %9</translation>
    </message>
    <message>
        <source>%1 replaced in its window, not saved.</source>
        <translation>%1 im Fenster ersetzt, nicht gespeichert.</translation>
    </message>
    <message>
        <source>%1 replaced.</source>
        <translation>%1 ersetzt.</translation>
    </message>
    <message>
        <source>Replace %1 occurrences in %2 items of account %3?

Items that are open are changed in their windows and not saved. All others are saved at once, which cannot be undone.</source>
        <translation>%1 Vorkommen in %2 Items des Kontos %3 ersetzen?

Offene Items werden in ihren Fenstern geändert und nicht gespeichert. Alle anderen werden sofort gespeichert, was sich nicht rückgängig machen lässt.</translation>
    </message>
    <message>
        <source>One item that is not open will be opened, changed and left unsaved.
Do you want to go on?</source>
        <translation>Ein Item, das nicht offen ist, wird geöffnet, geändert und nicht gespeichert.
Fortfahren?</translation>
    </message>
    <message>
        <source>%1 items that are not open will be opened, changed and left unsaved.
Do you want to go on?</source>
        <translation>%1 Items, die nicht offen sind, werden geöffnet, geändert und nicht gespeichert.
Fortfahren?</translation>
    </message>
    <message>
        <source>Reading document from host</source>
        <translation>Das Dokument wird vom Host gelesen</translation>
    </message>
    <message>
        <source>Saving document to host</source>
        <translation>Das Dokument wird auf dem Host gespeichert</translation>
    </message>
    <message>
        <source>Compiling program on host system</source>
        <translation>Das Programm wird auf dem Host kompiliert</translation>
    </message>
    <message>
        <source>Running the command for a clean compile</source>
        <translation>Der Befehl nach einem Lauf ohne Fehler läuft</translation>
    </message>
    <message>
        <source>Not opened again: %1</source>
        <translation>Nicht wieder geöffnet: %1</translation>
    </message>
    <message>
        <source>Unknown on the command line:%1</source>
        <translation>Unbekannt in der Befehlszeile:%1</translation>
    </message>
    <message>
        <source>No problems are known.</source>
        <translation>Es sind keine Probleme bekannt.</translation>
    </message>
    <message>
        <source>There is nothing here that can be mended so.</source>
        <translation>Hier gibt es nichts, was sich so beheben lässt.</translation>
    </message>
    <message>
        <source>This document is not read as a program.</source>
        <translation>Dieses Dokument wird nicht als Programm gelesen.</translation>
    </message>
    <message>
        <source>Nothing is known of where this is defined.</source>
        <translation>Es ist nicht bekannt, wo das definiert ist.</translation>
    </message>
    <message>
        <source>There is no name here whose places are known.</source>
        <translation>Hier steht kein Name, dessen Stellen bekannt sind.</translation>
    </message>
    <message>
        <source>%1 place.</source>
        <translation>%1 Stelle.</translation>
    </message>
    <message>
        <source>%1 places.</source>
        <translation>%1 Stellen.</translation>
    </message>
    <message>
        <source>%1 place renamed.</source>
        <translation>%1 Stelle umbenannt.</translation>
    </message>
    <message>
        <source>%1 places renamed.</source>
        <translation>%1 Stellen umbenannt.</translation>
    </message>
    <message>
        <source>%1 place could not be changed: the items are read-only, were not opened, or have other text there now.</source>
        <translation>%1 Stelle ließ sich nicht ändern: Die Items dürfen nur gelesen werden, wurden nicht geöffnet oder haben dort jetzt anderen Text.</translation>
    </message>
    <message>
        <source>%1 places could not be changed: the items are read-only, were not opened, or have other text there now.</source>
        <translation>%1 Stellen ließen sich nicht ändern: Die Items dürfen nur gelesen werden, wurden nicht geöffnet oder haben dort jetzt anderen Text.</translation>
    </message>
    <message>
        <source>There is no name here.</source>
        <translation>Hier steht kein Name.</translation>
    </message>
    <message>
        <source>What an item is called is not changed from within a program.</source>
        <translation>Wie ein Item heißt, wird nicht aus einem Programm heraus geändert.</translation>
    </message>
    <message>
        <source>It is not known what %1 is.</source>
        <translation>Es ist nicht bekannt, was %1 ist.</translation>
    </message>
    <message>
        <source>Several items are called %1.</source>
        <translation>Mehrere Items heißen %1.</translation>
    </message>
    <message>
        <source>Not all programs of the account have been read yet.</source>
        <translation>Noch sind nicht alle Programme des Kontos gelesen.</translation>
    </message>
    <message>
        <source>An included item was not found, and %1 may be of it.</source>
        <translation>Ein Include-Item wurde nicht gefunden, und %1 kann daraus sein.</translation>
    </message>
    <message>
        <source>%1 is a word of the language.</source>
        <translation>%1 ist ein Wort der Sprache.</translation>
    </message>
    <message>
        <source>%1 is no name.</source>
        <translation>%1 ist kein Name.</translation>
    </message>
    <message>
        <source>%1 cannot be read.</source>
        <translation>%1 lässt sich nicht lesen.</translation>
    </message>
    <message>
        <source>%1 has a name %2 already.</source>
        <translation>%1 hat schon einen Namen %2.</translation>
    </message>
    <message>
        <source>Line %1 of %2 is not understood.</source>
        <translation>Zeile %1 von %2 ist nicht verständlich.</translation>
    </message>
    <message>
        <source>%1 has been changed meanwhile.</source>
        <translation>%1 wurde inzwischen geändert.</translation>
    </message>
    <message>
        <source>There is a program %1 already.</source>
        <translation>Ein Programm %1 gibt es schon.</translation>
    </message>
    <message>
        <source>A label without a colon is a number.</source>
        <translation>Eine Marke ohne Doppelpunkt ist eine Zahl.</translation>
    </message>
    <message>
        <source>Settings cannot be stored: %7</source>
        <translation>Die Einstellungen lassen sich nicht speichern: %7</translation>
    </message>
    <message>
        <source>The history cannot be kept: %7</source>
        <translation>Die Fassungen lassen sich nicht aufbewahren: %7</translation>
    </message>
    <message>
        <source>The history cannot be packed: %7</source>
        <translation>Die Fassungen lassen sich nicht packen: %7</translation>
    </message>
    <message>
        <source>No recovery copies can be kept: %7</source>
        <translation>Sicherungen für die Wiederherstellung lassen sich nicht anlegen: %7</translation>
    </message>
    <message>
        <source>The Application is unable to start due to the following error:
%7</source>
        <translation>Das Programm lässt sich nicht starten, denn es ist ein Fehler aufgetreten:
%7</translation>
    </message>
    <message>
        <source>Error exporting keyword list: %7</source>
        <translation>Die Schlüsselwörter lassen sich nicht exportieren: %7</translation>
    </message>
    <message>
        <source>Error importing keyword list: %7</source>
        <translation>Die Schlüsselwörter lassen sich nicht importieren: %7</translation>
    </message>
    <message>
        <source>%7
Only the default connection can be used.</source>
        <translation>%7
Nur die Standardverbindung lässt sich benutzen.</translation>
    </message>
    <message>
        <source>%7 Whether %1 is stored is not known. It stays open and changed; saving it again connects again and finds out.</source>
        <translation>%7 Ob %1 gespeichert ist, ist nicht bekannt. Es bleibt offen und geändert; noch einmal speichern verbindet neu und stellt es fest.</translation>
    </message>
    <message>
        <source>The lock of %1 was lost. %7</source>
        <translation>Die Sperre von %1 ist verloren. %7</translation>
    </message>
    <message>
        <source>%7 has to wait: another request to a host is pending.</source>
        <translation>%7 muss warten: Eine andere Anfrage an einen Host läuft noch.</translation>
    </message>
    <message>
        <source>Other users can change the verbs of the account %1.

Run `%2`?</source>
        <translation>Andere Benutzer können die Verben des Kontos %1 ändern.

`%2` ausführen?</translation>
    </message>
    <message>
        <source>The password of %1 and all items would go to %2 as plain text, which others on the way can read. A tunnel keeps them to yourselves.

Connect all the same?</source>
        <translation>Das Kennwort von %1 und alle Items gingen im Klartext an %2, den andere unterwegs lesen können. Ein Tunnel verhindert das.

Trotzdem verbinden?</translation>
    </message>
    <message>
        <source>The account %1 belongs to a MultiValue server, whose locks do not reach here: an item that is open here can be changed by others on the server at the same time, and one of the two changes is lost.

A connection with kind=network in hosts.conf opens the same items under the server&apos;s own locks.</source>
        <translation>Das Konto %1 gehört einem MultiValue-Server, dessen Sperren nicht bis hierher reichen: Ein Item, das hier offen ist, kann auf dem Server gleichzeitig von anderen geändert werden, und eine der beiden Änderungen geht verloren.

Eine Verbindung mit kind=network in hosts.conf öffnet dieselben Items unter den Sperren des Servers.</translation>
    </message>
    <message>
        <source>This version of Nib includes a new monospaced font called DejaVu Sans Mono. Your current editor font is MVW Lucida Console. Would you like to change your editor font to the new font (recommended)?

(this prompt will not be shown again, but you can always change the font by selecting Preferences from the View menu)</source>
        <translation>Diese Version von Nib enthält eine neue Schrift fester Breite, DejaVu Sans Mono. Die Schrift des Editors ist jetzt MVW Lucida Console. Möchten Sie zur neuen Schrift wechseln (empfohlen)?

(Diese Frage kommt nicht wieder; die Schrift lässt sich jederzeit in den Einstellungen ändern.)</translation>
    </message>
    <message>
        <source>This version of Nib knows the words of MultiValue BASIC: statements, functions and numbers get colors of their own, names with a $ in them stay whole, and more blocks are indented and collapsed. Would you like to use that?

(this prompt will not be shown again, but you can always choose the dialect of your programs in the settings)</source>
        <translation>Diese Version von Nib kennt die Wörter von MultiValue BASIC: Anweisungen, Funktionen und Zahlen haben eigene Farben, Namen mit einem $ darin bleiben ganz, und mehr Blöcke werden eingerückt und eingeklappt. Möchten Sie das benutzen?

(Diese Frage kommt nicht wieder; der Dialekt der Programme lässt sich jederzeit in den Einstellungen wählen.)</translation>
    </message>
    <message>
        <source>Keyword &apos;%1&apos; contains an invalid character: %2. Import as &apos;%3&apos;?

Click &apos;Yes&apos; to import corrected keyword, &apos;No&apos; to skip this keyword, or Cancel to cancel the import operation.</source>
        <translation>Das Schlüsselwort &apos;%1&apos; enthält ein ungültiges Zeichen: %2. Als &apos;%3&apos; importieren?

„Ja“ importiert das berichtigte Wort, „Nein“ übergeht es, „Abbrechen“ beendet den Import.</translation>
    </message>
    <message>
        <source>A folder cannot be opened as a document. Drop the files in it instead.
%6

Only files of this computer can be opened by dropping them.
%7</source>
        <translation>Ein Ordner lässt sich nicht als Dokument öffnen. Ziehen Sie stattdessen die Dateien darin hierher.
%6

Durch Hierherziehen lassen sich nur Dateien dieses Rechners öffnen.
%7</translation>
    </message>
    <message>
        <source>A folder cannot be opened as a document. Drop the files in it instead.
%7</source>
        <translation>Ein Ordner lässt sich nicht als Dokument öffnen. Ziehen Sie stattdessen die Dateien darin hierher.
%7</translation>
    </message>
    <message>
        <source>Only files of this computer can be opened by dropping them.
%7</source>
        <translation>Durch Hierherziehen lassen sich nur Dateien dieses Rechners öffnen.
%7</translation>
    </message>
    <message>
        <source>%1
and %2 more</source>
        <translation>%1
und %2 weitere</translation>
    </message>
    <message>
        <source>Unable to open item %1 because &quot;%2&quot; is no type of connection. The types are mvdb and file.</source>
        <translation>Das Item %1 lässt sich nicht öffnen: &quot;%2&quot; ist keine Art einer Verbindung. Die Arten sind mvdb und file.</translation>
    </message>
    <message>
        <source>No name was given.</source>
        <translation>Es ist kein Name angegeben.</translation>
    </message>
    <message>
        <source>Choose a connection or a folder first, or type a whole path.</source>
        <translation>Erst eine Verbindung oder einen Ordner wählen oder einen ganzen Pfad eingeben.</translation>
    </message>
    <message>
        <source>%1 selected</source>
        <translation>%1 ausgewählt</translation>
    </message>
    <message>
        <source>The connection to %1 was lost (%7), and its locks with it. The next save connects again.</source>
        <translation>Die Verbindung zu %1 ist verloren (%7) und mit ihr die Sperren. Das nächste Speichern verbindet neu.</translation>
    </message>
    <message>
        <source>another program is writing to it.</source>
        <translation>ein anderes Programm schreibt gerade hinein.</translation>
    </message>
    <message>
        <source>The regular expression is faulty.
Character %1: %7</source>
        <translation>Der reguläre Ausdruck ist fehlerhaft.
Zeichen %1: %7</translation>
    </message>
    <message>
        <source>The regular expression is faulty.
%7</source>
        <translation>Der reguläre Ausdruck ist fehlerhaft.
%7</translation>
    </message>
    <message>
        <source>The replacement names a group that the expression does not have.</source>
        <translation>Die Ersetzung nennt eine Gruppe, die der Ausdruck nicht hat.</translation>
    </message>
    <message>
        <source>Reading...</source>
        <translation>Wird gelesen...</translation>
    </message>
    <message>
        <source>%1 as it was before a save that was cut short</source>
        <translation>%1 wie vor dem abgebrochenen Speichern</translation>
    </message>
    <message>
        <source>%1 is too large: files up to %2 MB can be edited.</source>
        <translation>%1 ist zu groß: Bearbeiten lassen sich Dateien bis %2 MB.</translation>
    </message>
    <message>
        <source>%1 is too large.</source>
        <translation>%1 ist zu groß.</translation>
    </message>
    <message>
        <source>%1 is not a plain file.</source>
        <translation>%1 ist keine gewöhnliche Datei.</translation>
    </message>
    <message>
        <source>%1 is not a text: it holds NUL bytes.</source>
        <translation>%1 ist kein Text: Es sind Null-Bytes darin.</translation>
    </message>
    <message>
        <source>%1 cannot be read: %7.</source>
        <translation>%1 lässt sich nicht lesen: %7.</translation>
    </message>
    <message>
        <source>%1 cannot be read: %7</source>
        <translation>%1 lässt sich nicht lesen: %7</translation>
    </message>
    <message>
        <source>%1 cannot be listed: %7</source>
        <translation>%1 lässt sich nicht auflisten: %7</translation>
    </message>
    <message>
        <source>%1 cannot be made: %7</source>
        <translation>%1 lässt sich nicht anlegen: %7</translation>
    </message>
    <message>
        <source>%1 cannot be made.</source>
        <translation>%1 lässt sich nicht anlegen.</translation>
    </message>
    <message>
        <source>%1 cannot be run: %7</source>
        <translation>%1 lässt sich nicht ausführen: %7</translation>
    </message>
    <message>
        <source>%1 cannot be saved: the character %2 in line %3 would be read as a mark in %4.</source>
        <translation>%1 lässt sich nicht speichern: Das Zeichen %2 in Zeile %3 würde in %4 als Marke gelesen.</translation>
    </message>
    <message>
        <source>%1 cannot be saved: the character %2 in line %3 cannot be held by a text.</source>
        <translation>%1 lässt sich nicht speichern: Das Zeichen %2 in Zeile %3 kann nicht in einem Text stehen.</translation>
    </message>
    <message>
        <source>%1 cannot be saved: the character %2 in line %3 cannot be held by %4.</source>
        <translation>%1 lässt sich nicht speichern: Das Zeichen %2 in Zeile %3 gibt es in %4 nicht.</translation>
    </message>
    <message>
        <source>%1 cannot be saved: no copy of it can be kept in %2: %7</source>
        <translation>%1 lässt sich nicht speichern: In %2 lässt sich keine Kopie davon ablegen: %7</translation>
    </message>
    <message>
        <source>%1 cannot be saved: the copy %2 cannot be written: %7</source>
        <translation>%1 lässt sich nicht speichern: Die Kopie %2 lässt sich nicht schreiben: %7</translation>
    </message>
    <message>
        <source>%1 cannot be saved: the server takes 99,999,995 bytes at most.</source>
        <translation>%1 lässt sich nicht speichern: Der Server nimmt höchstens 99.999.995 Bytes an.</translation>
    </message>
    <message>
        <source>%1 cannot be saved: line %2 holds a line feed, and a directory file would make two lines of it.</source>
        <translation>%1 lässt sich nicht speichern: In Zeile %2 steht ein Zeilenvorschub, und eine Verzeichnisdatei machte zwei Zeilen daraus.</translation>
    </message>
    <message>
        <source>%1 cannot be saved: %7.</source>
        <translation>%1 lässt sich nicht speichern: %7.</translation>
    </message>
    <message>
        <source>%1 cannot be saved: %7</source>
        <translation>%1 lässt sich nicht speichern: %7</translation>
    </message>
    <message>
        <source>%1 is saved, but may not survive a power failure: %7</source>
        <translation>%1 ist gespeichert, übersteht aber vielleicht keinen Stromausfall: %7</translation>
    </message>
    <message>
        <source>%1 was damaged while it was saved. Its old content is in %2: %7</source>
        <translation>%1 wurde beim Speichern beschädigt. Der alte Inhalt steht in %2: %7</translation>
    </message>
    <message>
        <source>%1 may not be saved. Its old content is in %2: %7</source>
        <translation>%1 ist vielleicht nicht gespeichert. Der alte Inhalt steht in %2: %7</translation>
    </message>
    <message>
        <source>%1 is locked by another user or process.
It is held by %7.</source>
        <translation>%1 ist von einem anderen Benutzer oder Prozess gesperrt.
Die Sperre hält %7.</translation>
    </message>
    <message>
        <source>%1 cannot be locked: the server&apos;s table of locks is full.</source>
        <translation>%1 lässt sich nicht sperren: Die Sperrtabelle des Servers ist voll.</translation>
    </message>
    <message>
        <source>%1 cannot be locked: %7</source>
        <translation>%1 lässt sich nicht sperren: %7</translation>
    </message>
    <message>
        <source>%1 is open in another window.</source>
        <translation>%1 ist in einem anderen Fenster offen.</translation>
    </message>
    <message>
        <source>%1 is locked.
It is held by %7.</source>
        <translation>%1 ist gesperrt.
Die Sperre hält %7.</translation>
    </message>
    <message>
        <source>this program, in another window</source>
        <translation>dieses Programm in einem anderen Fenster</translation>
    </message>
    <message>
        <source>a lost connection of this very program, until the server clears it away</source>
        <translation>eine verlorene Verbindung dieses Programms, bis der Server sie aufräumt</translation>
    </message>
    <message>
        <source>another process</source>
        <translation>ein anderer Prozess</translation>
    </message>
    <message>
        <source>No account is named on %1.</source>
        <translation>Auf %1 ist kein Konto genannt.</translation>
    </message>
    <message>
        <source>No account of %1 is named.</source>
        <translation>Es ist kein Konto von %1 genannt.</translation>
    </message>
    <message>
        <source>File %1 of account %2 is a hashed file, which only its server can read and write: use a connection with kind=network in hosts.conf.</source>
        <translation>Die Datei %1 des Kontos %2 ist eine Hash-Datei, die nur ihr Server lesen und schreiben kann: Dazu dient eine Verbindung mit kind=network in hosts.conf.</translation>
    </message>
    <message>
        <source>The folder %1 can be read. It holds one account, and %2 is none of them.</source>
        <translation>Der Ordner %1 lässt sich lesen. Er enthält ein Konto, und %2 ist es nicht.</translation>
    </message>
    <message>
        <source>The folder %1 can be read. It holds %2 accounts, and %3 is none of them.</source>
        <translation>Der Ordner %1 lässt sich lesen. Er enthält %2 Konten, und %3 ist keines davon.</translation>
    </message>
    <message>
        <source>The folder %1 can be read. It holds one account.</source>
        <translation>Der Ordner %1 lässt sich lesen. Er enthält ein Konto.</translation>
    </message>
    <message>
        <source>The folder %1 can be read. It holds %2 accounts.</source>
        <translation>Der Ordner %1 lässt sich lesen. Er enthält %2 Konten.</translation>
    </message>
    <message>
        <source>There is no command to run.</source>
        <translation>Es ist kein Befehl auszuführen.</translation>
    </message>
    <message>
        <source>%1 cannot be run while another command runs.</source>
        <translation>%1 lässt sich nicht ausführen, solange ein anderer Befehl läuft.</translation>
    </message>
    <message>
        <source>The verb %1 of account %2 names no program.</source>
        <translation>Das Verb %1 des Kontos %2 nennt kein Programm.</translation>
    </message>
    <message>
        <source>%1 was stopped: it did not end within %2 seconds.</source>
        <translation>%1 wurde abgebrochen: Es endete nicht innerhalb von %2 Sekunden.</translation>
    </message>
    <message>
        <source>%1 was not run.</source>
        <translation>%1 wurde nicht ausgeführt.</translation>
    </message>
    <message>
        <source>%1 is not in the VOC of account %2.</source>
        <translation>%1 steht nicht im VOC des Kontos %2.</translation>
    </message>
    <message>
        <source>%1 cannot be compiled: with blanks and both kinds of quotes its name is no single word of a command.</source>
        <translation>%1 lässt sich nicht kompilieren: Mit Leerzeichen und beiden Arten von Anführungszeichen ist der Name kein einzelnes Wort eines Befehls.</translation>
    </message>
    <message>
        <source>%1 cannot be compiled: the host would take its name for an option.</source>
        <translation>%1 lässt sich nicht kompilieren: Der Host hielte den Namen für eine Option.</translation>
    </message>
    <message>
        <source>%1 cannot be compiled: in the compile command its name is a part of a word, which holds no blanks.</source>
        <translation>%1 lässt sich nicht kompilieren: Im Befehl dafür ist der Name Teil eines Wortes, und das enthält keine Leerzeichen.</translation>
    </message>
    <message>
        <source>(the rest of the output was cut off)</source>
        <translation>(der Rest der Ausgabe ist abgeschnitten)</translation>
    </message>
    <message>
        <source>(The command asked for input, and was ended.)</source>
        <translation>(Der Befehl fragte nach einer Eingabe und wurde beendet.)</translation>
    </message>
    <message>
        <source>The name &quot;%1...&quot; is too long: %2 of %3 bytes.</source>
        <translation>Der Name „%1...“ ist zu lang: %2 von %3 Bytes.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot be the id of an item of this file: its server takes only the characters of ASCII, and none of them that control a terminal.</source>
        <translation>„%1“ kann in dieser Datei keine Item-Id sein: Ihr Server nimmt nur Zeichen aus ASCII, und keine davon, die ein Terminal steuern.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not an item.</source>
        <translation>„%1“ ist kein Item.</translation>
    </message>
    <message>
        <source>The default connection keeps its name.</source>
        <translation>Die Standardverbindung behält ihren Namen.</translation>
    </message>
    <message>
        <source>The default connection cannot be removed.</source>
        <translation>Die Standardverbindung lässt sich nicht entfernen.</translation>
    </message>
    <message>
        <source>A connection needs a name.</source>
        <translation>Eine Verbindung braucht einen Namen.</translation>
    </message>
    <message>
        <source>The name of a connection cannot hold the character &quot;]&quot;.</source>
        <translation>Der Name einer Verbindung darf kein &quot;]&quot; enthalten.</translation>
    </message>
    <message>
        <source>There is a connection named &quot;%1&quot; already.</source>
        <translation>Eine Verbindung namens „%1“ gibt es schon.</translation>
    </message>
    <message>
        <source>The folder of %1 cannot be made: %7</source>
        <translation>Der Ordner von %1 lässt sich nicht anlegen: %7</translation>
    </message>
    <message>
        <source>%1 was changed by another program. It is not overwritten: cancel, and begin anew with its present state.</source>
        <translation>%1 wurde von einem anderen Programm geändert und wird nicht überschrieben: Abbrechen und mit dem jetzigen Stand neu anfangen.</translation>
    </message>
    <message>
        <source>%1 is no UTF-8 text. It has to be put right before it can be changed here.</source>
        <translation>%1 ist kein UTF-8-Text und muss in Ordnung gebracht werden, bevor sich hier etwas ändern lässt.</translation>
    </message>
    <message>
        <source>The host connection &quot;%1&quot; is not set up in hosts.conf.</source>
        <translation>Die Verbindung „%1“ ist in hosts.conf nicht eingerichtet.</translation>
    </message>
    <message>
        <source>The host connection &quot;%1&quot; is of the unknown kind &quot;%2&quot;.</source>
        <translation>Die Verbindung „%1“ ist von der unbekannten Art „%2“.</translation>
    </message>
    <message>
        <source>The host connection &quot;%1&quot; names no address.</source>
        <translation>Die Verbindung „%1“ nennt keine Adresse.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no port: a number from 1 to 65535.</source>
        <translation>„%1“ ist kein Port: Das ist eine Zahl von 1 bis 65535.</translation>
    </message>
    <message>
        <source>ids=%1 in hosts.conf is neither ids=plain nor ids=escaped.</source>
        <translation>ids=%1 in hosts.conf ist weder ids=plain noch ids=escaped.</translation>
    </message>
    <message>
        <source>The character set %1 is not known.</source>
        <translation>Der Zeichensatz %1 ist nicht bekannt.</translation>
    </message>
    <message>
        <source>The character set %1 is not based on ASCII.</source>
        <translation>Der Zeichensatz %1 beruht nicht auf ASCII.</translation>
    </message>
    <message>
        <source>A name cannot hold line breaks and characters that are no text.</source>
        <translation>Ein Name darf keine Zeilenumbrüche enthalten und keine Zeichen, die kein Text sind.</translation>
    </message>
    <message>
        <source>%1 cannot hold line breaks and characters that are no text.</source>
        <translation>%1 darf keine Zeilenumbrüche enthalten und keine Zeichen, die kein Text sind.</translation>
    </message>
    <message>
        <source>The server %1 cannot be reached: %7.</source>
        <translation>Der Server %1 ist nicht zu erreichen: %7.</translation>
    </message>
    <message>
        <source>The connection to %1 was lost.</source>
        <translation>Die Verbindung zu %1 ist verloren.</translation>
    </message>
    <message>
        <source>Not logged in to %1: it refused the user or the password.</source>
        <translation>Nicht bei %1 angemeldet: Benutzer oder Kennwort wurden abgelehnt.</translation>
    </message>
    <message>
        <source>Not logged in to %1.</source>
        <translation>Nicht bei %1 angemeldet.</translation>
    </message>
    <message>
        <source>Account %1 cannot be entered: %7.</source>
        <translation>Das Konto %1 lässt sich nicht betreten: %7.</translation>
    </message>
    <message>
        <source>Account %1 cannot be entered.</source>
        <translation>Das Konto %1 lässt sich nicht betreten.</translation>
    </message>
    <message>
        <source>File %1 of account %2 cannot be opened: %7.</source>
        <translation>Die Datei %1 des Kontos %2 lässt sich nicht öffnen: %7.</translation>
    </message>
    <message>
        <source>The server %1 lets user %2 into account %3, but to read alone: %7.</source>
        <translation>Der Server %1 lässt den Benutzer %2 in das Konto %3, aber nur zum Lesen: %7.</translation>
    </message>
    <message>
        <source>The server %1 lets user %2 into account %3.</source>
        <translation>Der Server %1 lässt den Benutzer %2 in das Konto %3.</translation>
    </message>
    <message>
        <source>%1 was changed on the server since it was opened. Save it again to replace it.</source>
        <translation>%1 wurde auf dem Server geändert, seit es geöffnet wurde. Noch einmal speichern, um es zu ersetzen.</translation>
    </message>
    <message>
        <source>%1 was deleted on the server since it was opened. Save it again to make it anew.</source>
        <translation>%1 wurde auf dem Server gelöscht, seit es geöffnet wurde. Noch einmal speichern, um es neu anzulegen.</translation>
    </message>
    <message>
        <source>The request was cancelled.</source>
        <translation>Die Anfrage wurde abgebrochen.</translation>
    </message>
    <message>
        <source>The connection was reset.</source>
        <translation>Die Verbindung wurde zurückgesetzt.</translation>
    </message>
    <message>
        <source>Reading %1 of the VOC</source>
        <translation>%1 aus dem VOC lesen</translation>
    </message>
    <message>
        <source>Reading %1</source>
        <translation>%1 lesen</translation>
    </message>
    <message>
        <source>Locking %1</source>
        <translation>%1 sperren</translation>
    </message>
    <message>
        <source>Saving %1</source>
        <translation>%1 speichern</translation>
    </message>
    <message>
        <source>Looking for %1</source>
        <translation>%1 suchen</translation>
    </message>
    <message>
        <source>Listing %1</source>
        <translation>%1 auflisten</translation>
    </message>
    <message>
        <source>Entering %1</source>
        <translation>Konto %1 betreten</translation>
    </message>
    <message>
        <source>Asking who holds %1</source>
        <translation>Fragen, wer %1 hält</translation>
    </message>
    <message>
        <source>Testing the connection</source>
        <translation>Die Verbindung testen</translation>
    </message>
    <message>
        <source>it has not answered for %1 seconds</source>
        <translation>er hat seit %1 Sekunden nicht geantwortet</translation>
    </message>
    <message>
        <source>the connection was lost</source>
        <translation>die Verbindung ist verloren</translation>
    </message>
    <message>
        <source>no MultiValue server answers there</source>
        <translation>dort antwortet kein MultiValue-Server</translation>
    </message>
    <message>
        <source>it has closed the connection at the login: it may have no free session</source>
        <translation>er hat die Verbindung bei der Anmeldung geschlossen, vielleicht ist keine Sitzung frei</translation>
    </message>
    <message>
        <source>it sent what is no reply of a MultiValue server</source>
        <translation>er sandte etwas, was keine Antwort eines MultiValue-Servers ist</translation>
    </message>
    <message>
        <source>the server has ended it</source>
        <translation>der Server hat sie beendet</translation>
    </message>
    <message>
        <source>the other side has closed the connection</source>
        <translation>die Gegenseite hat die Verbindung geschlossen</translation>
    </message>
    <message>
        <source>the tunnel %1 has ended</source>
        <translation>der Tunnel %1 ist beendet</translation>
    </message>
    <message>
        <source>the tunnel %1 cannot be started: %7</source>
        <translation>der Tunnel %1 lässt sich nicht starten: %7</translation>
    </message>
    <message>
        <source>no command is named for the tunnel</source>
        <translation>für den Tunnel ist kein Befehl genannt</translation>
    </message>
    <message>
        <source>there is no machine %1 (%2)</source>
        <translation>es gibt keinen Rechner %1 (%2)</translation>
    </message>
    <message>
        <source>%1 port %2 does not answer</source>
        <translation>%1, Port %2, antwortet nicht</translation>
    </message>
    <message>
        <source>%1 port %2 refuses connections: no server listens there</source>
        <translation>%1, Port %2, lehnt Verbindungen ab: dort wartet kein Server</translation>
    </message>
    <message>
        <source>%1 port %2 cannot be reached: %7</source>
        <translation>%1, Port %2, ist nicht zu erreichen: %7</translation>
    </message>
    <message>
        <source>a name has 1 to 32 characters</source>
        <translation>ein Name hat 1 bis 32 Zeichen</translation>
    </message>
    <message>
        <source>the item id is not allowed there</source>
        <translation>die Item-Id ist dort nicht erlaubt</translation>
    </message>
    <message>
        <source>the name of the file is not allowed</source>
        <translation>der Name der Datei ist nicht erlaubt</translation>
    </message>
    <message>
        <source>the file itself is missing, there is an entry for it in the VOC alone</source>
        <translation>die Datei selbst fehlt, nur im VOC gibt es einen Eintrag für sie</translation>
    </message>
    <message>
        <source>the VOC has no such name</source>
        <translation>im VOC gibt es den Namen nicht</translation>
    </message>
    <message>
        <source>the name stands for something else in the VOC</source>
        <translation>der Name steht im VOC für etwas anderes</translation>
    </message>
    <message>
        <source>there is no such item</source>
        <translation>das Item gibt es nicht</translation>
    </message>
    <message>
        <source>the server cannot read or write the file</source>
        <translation>der Server kann die Datei nicht lesen oder schreiben</translation>
    </message>
    <message>
        <source>the user may not write to the file: the user&apos;s primary group has to be the server&apos;s group</source>
        <translation>der Benutzer darf nicht in die Datei schreiben: seine Hauptgruppe muss die Gruppe des Servers sein</translation>
    </message>
    <message>
        <source>a trigger of the file refused it</source>
        <translation>ein Trigger der Datei lehnte es ab</translation>
    </message>
    <message>
        <source>the server wants a lock for it</source>
        <translation>der Server will dafür eine Sperre</translation>
    </message>
    <message>
        <source>the user may not write there: the user&apos;s primary group has to be the server&apos;s group</source>
        <translation>der Benutzer darf dort nicht schreiben: seine Hauptgruppe muss die Gruppe des Servers sein</translation>
    </message>
    <message>
        <source>the file is encrypted</source>
        <translation>die Datei ist verschlüsselt</translation>
    </message>
    <message>
        <source>the server answers with status %1</source>
        <translation>der Server antwortet mit Status %1</translation>
    </message>
    <message>
        <source>%1 on %2</source>
        <translation>%1 auf %2</translation>
    </message>
</context>
<context>
    <name>OutcomeTable</name>
    <message>
        <source>Line</source>
        <translation>Zeile</translation>
    </message>
    <message>
        <source>Of whom</source>
        <translation>Von wem</translation>
    </message>
    <message>
        <source>Outcome</source>
        <translation>Ergebnis</translation>
    </message>
    <message>
        <source>conflict %1: choose above</source>
        <translation>Konflikt %1: oben wählen</translation>
    </message>
    <message>
        <source>lines are gone here</source>
        <translation>hier fehlen Zeilen</translation>
    </message>
    <message>
        <source>Before</source>
        <translation>Vorher</translation>
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
    <name>QtComparePainter</name>
    <message>
        <source>%1 lines alike</source>
        <translation>%1 gleiche Zeilen</translation>
    </message>
</context>
<context>
    <name>QtCompareView</name>
    <message>
        <source>Vertical scroll bar</source>
        <translation>Senkrechte Bildlaufleiste</translation>
    </message>
    <message>
        <source>Horizontal scroll bar</source>
        <translation>Waagerechte Bildlaufleiste</translation>
    </message>
    <message>
        <source>Two texts side by side</source>
        <translation>Zwei Texte nebeneinander</translation>
    </message>
    <message>
        <source>nothing</source>
        <translation>nichts</translation>
    </message>
    <message>
        <source>line %1: %2</source>
        <translation>Zeile %1: %2</translation>
    </message>
    <message>
        <source>Changed. Left %1. Right %2.</source>
        <translation>Geändert. Links %1. Rechts %2.</translation>
    </message>
    <message>
        <source>Takes this over to the right (Alt+Right)</source>
        <translation>Übernimmt dies nach rechts (Alt+Rechts)</translation>
    </message>
    <message>
        <source>Takes this over to the left (Alt+Left)</source>
        <translation>Übernimmt dies nach links (Alt+Links)</translation>
    </message>
</context>
<context>
    <name>QtCompareWindows</name>
    <message>
        <source>Compare</source>
        <translation>Vergleichen</translation>
    </message>
    <message>
        <source>With &amp;document:</source>
        <translation>Mit dem &amp;Dokument:</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
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
    <name>QtGridModel</name>
    <message>
        <source>%1, as it is stored</source>
        <translation>%1, wie gespeichert</translation>
    </message>
    <message>
        <source>Shown as it is stored: the conversion %1 does not fit this value.</source>
        <translation>Wie gespeichert gezeigt: Die Umwandlung %1 passt nicht zu diesem Wert.</translation>
    </message>
    <message>
        <source>Shown as it is stored: the conversion %1 is not known.</source>
        <translation>Wie gespeichert gezeigt: Die Umwandlung %1 ist nicht bekannt.</translation>
    </message>
    <message>
        <source>Attribute %1, which the dictionary does not tell of</source>
        <translation>Attribut %1, von dem das Wörterbuch nichts sagt</translation>
    </message>
    <message>
        <source>%1, attribute %2</source>
        <translation>%1, Attribut %2</translation>
    </message>
    <message>
        <source>%1, attribute %2, conversion %3</source>
        <translation>%1, Attribut %2, Umwandlung %3</translation>
    </message>
    <message>
        <source>The record was changed meanwhile.</source>
        <translation>Der Satz wurde inzwischen geändert.</translation>
    </message>
</context>
<context>
    <name>QtGridView</name>
    <message>
        <source>&amp;Insert Value</source>
        <translation>Wert &amp;einfügen</translation>
    </message>
    <message>
        <source>&amp;Insert Row</source>
        <translation>Zeile &amp;einfügen</translation>
    </message>
    <message>
        <source>&amp;Delete Value</source>
        <translation>Wert &amp;löschen</translation>
    </message>
    <message>
        <source>&amp;Delete Row</source>
        <translation>Zeile &amp;löschen</translation>
    </message>
    <message>
        <source>Move &amp;Left</source>
        <translation>Nach l&amp;inks</translation>
    </message>
    <message>
        <source>Move &amp;Up</source>
        <translation>Nach &amp;oben</translation>
    </message>
    <message>
        <source>Move &amp;Right</source>
        <translation>Nach &amp;rechts</translation>
    </message>
    <message>
        <source>Move D&amp;own</source>
        <translation>Nach &amp;unten</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>Ein&amp;fügen</translation>
    </message>
    <message>
        <source>&amp;Empty the Cell</source>
        <translation>&amp;Zelle leeren</translation>
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
    <name>SidesTable</name>
    <message>
        <source>Theirs: as it is stored now</source>
        <translation>Fremd: jetzt gespeichert</translation>
    </message>
    <message>
        <source>Mine</source>
        <translation>Eigen</translation>
    </message>
    <message>
        <source>Before: as last read or saved</source>
        <translation>Vorher: zuletzt gelesen</translation>
    </message>
</context>
<context>
    <name>frmAutoRecover</name>
    <message>
        <source>Nib Auto Recover</source>
        <translation>Nib-Wiederherstellung</translation>
    </message>
    <message>
        <source>Check all documents you want to recover, then click the Recover button. Click Delete to delete recoverable copies.</source>
        <translation>Haken Sie alle Dokumente an, die wiederhergestellt werden sollen, dann klicken Sie auf „Wiederherstellen“. „Löschen“ löscht die Sicherungen.</translation>
    </message>
    <message>
        <source>Recoverable documents</source>
        <translation>Wiederherstellbare Dokumente</translation>
    </message>
    <message>
        <source>Document</source>
        <translation>Dokument</translation>
    </message>
    <message>
        <source>Place</source>
        <translation>Ort</translation>
    </message>
    <message>
        <source>Lines</source>
        <translation>Zeilen</translation>
    </message>
    <message>
        <source>Last written</source>
        <translation>Zuletzt geschrieben</translation>
    </message>
    <message>
        <source>Check all</source>
        <translation>Alle anhaken</translation>
    </message>
    <message>
        <source>Uncheck all</source>
        <translation>Keines anhaken</translation>
    </message>
    <message>
        <source>Compare</source>
        <translation>Vergleichen</translation>
    </message>
    <message>
        <source>Shows what would be recovered beside what is stored now.</source>
        <translation>Zeigt, was wiederhergestellt würde, neben dem, was jetzt gespeichert ist.</translation>
    </message>
    <message>
        <source>Recover</source>
        <translation>Wiederherstellen</translation>
    </message>
    <message>
        <source>Selected documents are opened as new documents from the recoverable copy.</source>
        <translation>Die angehakten Dokumente werden aus der Sicherung als neue Dokumente geöffnet.</translation>
    </message>
    <message>
        <source>Delete all</source>
        <translation>Alle löschen</translation>
    </message>
    <message>
        <source>Delete recoverable copies of documents.</source>
        <translation>Löscht die Sicherungen von Dokumenten.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>%1 lines</source>
        <translation>%1 Zeilen</translation>
    </message>
</context>
<context>
    <name>frmCompare</name>
    <message>
        <source>The change before (Shift+F8)</source>
        <translation>Die Änderung davor (Umschalt+F8)</translation>
    </message>
    <message>
        <source>The next change (F8)</source>
        <translation>Die nächste Änderung (F8)</translation>
    </message>
    <message>
        <source>Takes this over to the left (Alt+Left)</source>
        <translation>Übernimmt dies nach links (Alt+Links)</translation>
    </message>
    <message>
        <source>Takes this over to the right (Alt+Right)</source>
        <translation>Übernimmt dies nach rechts (Alt+Rechts)</translation>
    </message>
    <message>
        <source>Ignore:</source>
        <translation>Nicht beachten:</translation>
    </message>
    <message>
        <source>&amp;Blanks</source>
        <translation>&amp;Leerzeichen</translation>
    </message>
    <message>
        <source>Indents, blanks at the end, and how many there are between words</source>
        <translation>Einzüge, Leerzeichen am Ende und wie viele zwischen Wörtern stehen</translation>
    </message>
    <message>
        <source>C&amp;ase</source>
        <translation>&amp;Groß und klein</translation>
    </message>
    <message>
        <source>Small and capital letters are the same</source>
        <translation>Kleine und große Buchstaben sind gleich</translation>
    </message>
    <message>
        <source>Co&amp;mments</source>
        <translation>&amp;Kommentare</translation>
    </message>
    <message>
        <source>Lines that hold nothing but a comment</source>
        <translation>Zeilen, die nur einen Kommentar enthalten</translation>
    </message>
    <message>
        <source>Compare %1</source>
        <translation>%1 vergleichen</translation>
    </message>
    <message>
        <source>One of the two is no text: it is not shown.</source>
        <translation>Eines von beiden ist kein Text: Es wird nicht gezeigt.</translation>
    </message>
    <message>
        <source>The comparison was stopped. F5 begins it again.</source>
        <translation>Der Vergleich wurde angehalten. F5 beginnt ihn von vorn.</translation>
    </message>
    <message>
        <source>The texts have too little in common to find all of it: some lines are shown as changed that are not.</source>
        <translation>Die Texte haben zu wenig gemeinsam, um alles davon zu finden: Manche Zeilen stehen als geändert da, die es nicht sind.</translation>
    </message>
    <message>
        <source>Comparing... (Escape stops)</source>
        <translation>Vergleicht... (Escape hält an)</translation>
    </message>
    <message>
        <source>No differences</source>
        <translation>Keine Unterschiede</translation>
    </message>
    <message>
        <source>No differences but those that are ignored</source>
        <translation>Keine Unterschiede außer denen, die nicht beachtet werden</translation>
    </message>
    <message>
        <source>Changes: %1</source>
        <translation>Änderungen: %1</translation>
    </message>
    <message>
        <source>Change %1 of %2</source>
        <translation>Änderung %1 von %2</translation>
    </message>
</context>
<context>
    <name>frmDocument</name>
    <message>
        <source>Window Menu</source>
        <translation>Fenstermenü</translation>
    </message>
    <message>
        <source> on %1</source>
        <translation> auf %1</translation>
    </message>
    <message>
        <source>, account %1</source>
        <translation>, Konto %1</translation>
    </message>
    <message>
        <source> (New)</source>
        <translation> (Neu)</translation>
    </message>
    <message>
        <source> (Read only)</source>
        <translation> (Nur lesen)</translation>
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
        <translation>Regulärer Aus&amp;druck</translation>
    </message>
    <message>
        <source>In each line; $1 in the replacement is what the first pair of parentheses found.</source>
        <translation>In jeder Zeile; $1 in der Ersetzung ist, was das erste Klammerpaar gefunden hat.</translation>
    </message>
    <message>
        <source>&amp;In Account...</source>
        <translation>&amp;Im Konto...</translation>
    </message>
    <message>
        <source>Searches all items of files of an account</source>
        <translation>Durchsucht alle Items von Dateien eines Kontos</translation>
    </message>
    <message>
        <source>Only one document is open.</source>
        <translation>Nur ein Dokument ist offen.</translation>
    </message>
    <message>
        <source>No text is selected.</source>
        <translation>Es ist kein Text ausgewählt.</translation>
    </message>
    <message>
        <source>Fi&amp;nd what:</source>
        <translation>S&amp;uchen nach:</translation>
    </message>
    <message>
        <source>Re&amp;place with:</source>
        <translation>Erset&amp;zen durch:</translation>
    </message>
    <message>
        <source>Look in:</source>
        <translation>Suchen in:</translation>
    </message>
    <message>
        <source>Direction:</source>
        <translation>Richtung:</translation>
    </message>
    <message>
        <source>Curr&amp;ent document</source>
        <translation>Dieses Do&amp;kument</translation>
    </message>
    <message>
        <source>All &amp;open documents</source>
        <translation>Alle &amp;offenen</translation>
    </message>
    <message>
        <source>&amp;Selected text</source>
        <translation>Auswa&amp;hl</translation>
    </message>
    <message>
        <source>Direction</source>
        <translation>Richtung</translation>
    </message>
    <message>
        <source>&amp;Up</source>
        <translation>Au&amp;fwärts</translation>
    </message>
    <message>
        <source>&amp;Down</source>
        <translation>A&amp;bwärts</translation>
    </message>
    <message>
        <source>Match &amp;case</source>
        <translation>&amp;Groß/klein</translation>
    </message>
    <message>
        <source>Match &amp;whole word only</source>
        <translation>Nur ga&amp;nze Wörter</translation>
    </message>
    <message>
        <source>&amp;Find Next</source>
        <translation>&amp;Weitersuchen</translation>
    </message>
    <message>
        <source>Find &amp;All</source>
        <translation>&amp;Alle suchen</translation>
    </message>
    <message>
        <source>Book&amp;mark All</source>
        <translation>Alle &amp;merken</translation>
    </message>
    <message>
        <source>&amp;Replace</source>
        <translation>&amp;Ersetzen</translation>
    </message>
    <message>
        <source>Replace &amp;All</source>
        <translation>A&amp;lle ersetzen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
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
        <translation>Im Konto...</translation>
    </message>
    <message>
        <source>Searches all items of files of an account</source>
        <translation>Durchsucht alle Items von Dateien eines Kontos</translation>
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
    <name>frmHistory</name>
    <message>
        <source>When</source>
        <translation>Wann</translation>
    </message>
    <message>
        <source>Who</source>
        <translation>Wer</translation>
    </message>
    <message>
        <source>Lines</source>
        <translation>Zeilen</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>Nachricht</translation>
    </message>
    <message>
        <source>No document is in front.</source>
        <translation>Es ist kein Dokument im Vordergrund.</translation>
    </message>
    <message>
        <source>This document has never been saved. Its first save begins its history.</source>
        <translation>Dieses Dokument wurde noch nie gespeichert. Mit dem ersten Speichern beginnt sein Verlauf.</translation>
    </message>
    <message>
        <source>No versions of this account are kept: hosts.conf says history=no.</source>
        <translation>Von diesem Konto werden keine Fassungen aufgehoben: In hosts.conf steht history=no.</translation>
    </message>
    <message>
        <source>There are no versions yet. The next save leaves the first.</source>
        <translation>Es gibt noch keine Fassungen. Das nächste Speichern hinterlässt die erste.</translation>
    </message>
    <message>
        <source>The versions cannot be read: %1</source>
        <translation>Die Fassungen können nicht gelesen werden: %1</translation>
    </message>
    <message>
        <source>as it was first read</source>
        <translation>wie zuerst gelesen</translation>
    </message>
    <message>
        <source>changed elsewhere</source>
        <translation>anderswo geändert</translation>
    </message>
    <message>
        <source>History</source>
        <translation>Verlauf</translation>
    </message>
    <message>
        <source>Bring Back</source>
        <translation>Zurückholen</translation>
    </message>
    <message>
        <source>Compare</source>
        <translation>Vergleichen</translation>
    </message>
    <message>
        <source>Versions</source>
        <translation>Fassungen</translation>
    </message>
    <message>
        <source>Makes the text of the chosen version that of the document; Undo takes that back</source>
        <translation>Macht den Text der gewählten Fassung zu dem des Dokuments; Rückgängig nimmt das zurück</translation>
    </message>
    <message>
        <source>Shows what differs between two chosen versions, or one and the document</source>
        <translation>Zeigt, was sich zwischen zwei gewählten Fassungen oder zwischen einer und dem Dokument unterscheidet</translation>
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
    <name>frmMerge</name>
    <message>
        <source>&amp;Theirs</source>
        <translation>&amp;Fremdes</translation>
    </message>
    <message>
        <source>&amp;Mine</source>
        <translation>&amp;Eigenes</translation>
    </message>
    <message>
        <source>Theirs, t&amp;hen Mine</source>
        <translation>F&amp;remdes, dann Eigenes</translation>
    </message>
    <message>
        <source>Mine, the&amp;n Theirs</source>
        <translation>E&amp;igenes, dann Fremdes</translation>
    </message>
    <message>
        <source>N&amp;either</source>
        <translation>&amp;Keines</translation>
    </message>
    <message>
        <source>Take &amp;All of Theirs</source>
        <translation>&amp;Alles Fremde nehmen</translation>
    </message>
    <message>
        <source>The document becomes what is stored now. Undo brings your text back.</source>
        <translation>Das Dokument wird zu dem, was jetzt gespeichert ist. „Rückgängig“ bringt Ihren Text zurück.</translation>
    </message>
    <message>
        <source>&amp;Save Mine as a Copy...</source>
        <translation>Eigenes als Ko&amp;pie speichern...</translation>
    </message>
    <message>
        <source>Your text goes to another place, and theirs stays where it is.</source>
        <translation>Ihr Text kommt an einen anderen Ort, der fremde bleibt, wo er ist.</translation>
    </message>
    <message>
        <source>Me&amp;rge</source>
        <translation>&amp;Zusammenführen</translation>
    </message>
    <message>
        <source>The document becomes the outcome. Nothing is stored before you save it.</source>
        <translation>Das Dokument wird zum Ergebnis. Gespeichert wird erst, wenn Sie es speichern.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>The three texts</source>
        <translation>Die drei Texte</translation>
    </message>
    <message>
        <source>Outcome</source>
        <translation>Ergebnis</translation>
    </message>
    <message>
        <source>&amp;Previous</source>
        <translation>&amp;Voriger</translation>
    </message>
    <message>
        <source>Ne&amp;xt</source>
        <translation>&amp;Nächster</translation>
    </message>
    <message>
        <source>Previous conflict</source>
        <translation>Voriger Konflikt</translation>
    </message>
    <message>
        <source>Next conflict</source>
        <translation>Nächster Konflikt</translation>
    </message>
    <message>
        <source>Merge %1</source>
        <translation>%1 zusammenführen</translation>
    </message>
    <message>
        <source>Conflict %1 of %2: %3</source>
        <translation>Konflikt %1 von %2: %3</translation>
    </message>
    <message>
        <source>%1 was changed by others while you changed it here. What does not overlap is merged: %2 of their changes, %3 of yours, %4 that both made.</source>
        <translation>%1 wurde von anderen geändert, während Sie es hier geändert haben. Was sich nicht überschneidet, ist zusammengeführt: fremde Änderungen %2, eigene %3, von beiden gemachte %4.</translation>
    </message>
    <message>
        <source>The texts differ so much that conflicts may hold lines which are alike.</source>
        <translation>Die Texte unterscheiden sich so stark, dass Konflikte auch gleiche Zeilen enthalten können.</translation>
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
    <name>frmProperties</name>
    <message>
        <source>Nib Document Properties</source>
        <translation>Nib-Dokumenteigenschaften</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>S&amp;chließen</translation>
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
        <translation>Teil eines Item-Namens; mit @ davor einer Marke oder eines Unterprogramms</translation>
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
    <name>frmRecord</name>
    <message>
        <source>Filter:</source>
        <translation>Filter:</translation>
    </message>
    <message>
        <source>Filter</source>
        <translation>Filter</translation>
    </message>
    <message>
        <source>The dictionary could not be read: %1</source>
        <translation>Das Wörterbuch konnte nicht gelesen werden: %1</translation>
    </message>
    <message>
        <source>No dictionary</source>
        <translation>Kein Wörterbuch</translation>
    </message>
    <message>
        <source>Dictionary: %1</source>
        <translation>Wörterbuch: %1</translation>
    </message>
    <message>
        <source>Attributes</source>
        <translation>Attribute</translation>
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
    <message>
        <source>Double-click to edit source line</source>
        <translation>Ein Doppelklick führt zur Zeile</translation>
    </message>
    <message>
        <source>&amp;Print</source>
        <translation>&amp;Drucken</translation>
    </message>
    <message>
        <source>Fon&amp;t...</source>
        <translation>&amp;Schrift...</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>S&amp;chließen</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>Select &amp;All</source>
        <translation>&amp;Alles auswählen</translation>
    </message>
    <message>
        <source>Select &amp;None</source>
        <translation>&amp;Nichts auswählen</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;Float</source>
        <translation>&amp;Lösen</translation>
    </message>
    <message>
        <source>&amp;Dock</source>
        <translation>&amp;Andocken</translation>
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
    <message>
        <source>Compile</source>
        <translation>Kompilieren</translation>
    </message>
    <message>
        <source>User-defined comment</source>
        <translation>Eigener Kommentar</translation>
    </message>
    <message>
        <source>Nib Settings</source>
        <translation>Nib-Einstellungen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Code Element</source>
        <translation>Textart</translation>
    </message>
    <message>
        <source>Highlight Color</source>
        <translation>Farbe</translation>
    </message>
    <message>
        <source>Style</source>
        <translation>Stil</translation>
    </message>
    <message>
        <source>Bold</source>
        <translation>Fett</translation>
    </message>
    <message>
        <source>Italic</source>
        <translation>Kursiv</translation>
    </message>
    <message>
        <source>Block indent for reserved keyword</source>
        <translation>Blockeinrückung des reservierten Schlüsselworts</translation>
    </message>
    <message>
        <source>Block indent for keyword</source>
        <translation>Blockeinrückung des Schlüsselworts</translation>
    </message>
    <message>
        <source>History</source>
        <translation>Verlauf</translation>
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
