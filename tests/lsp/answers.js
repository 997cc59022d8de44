// What each request answers, on a copy of the account DEMO.
'use strict';
const assert = require('assert');
const fs = require('fs');
const path = require('path');
const {Client, account, applied, run, within} = require('./client');

const RICH = {
  workspace: {workspaceEdit: {documentChanges: true}}, window: {workDoneProgress: true},
  textDocument: {
    hover: {contentFormat: ['markdown', 'plaintext']},
    documentSymbol: {hierarchicalDocumentSymbolSupport: true},
    signatureHelp: {signatureInformation: {parameterInformation: {labelOffsetSupport: true}}},
  },
};
const INVOICE = 'BP INVOICE';
let folders = 0;

async function demo(more = {capabilities: RICH}, change = text => text) {
  const client = new Client();
  await client.begin(account(`answers-${++folders}`), more);
  client.open(INVOICE, change(fs.readFileSync(path.join(client.root, 'BP/INVOICE'), 'utf8')));
  return client;
}

const line = place => `${path.basename(place.uri)}:${place.range.start.line + 1}`;
const words = (client, name, range) => client.texts.get(name).text.split('\n')[range.start.line]
  .slice(range.start.character, range.end.character);

/** A small account is read before anybody could look. */
async function tellsProgress() {
  const client = new Client();
  const root = account('large');
  const text = fs.readFileSync(path.join(root, 'BP/INVOICE'));
  for (let copy = 0; copy < 600; ++copy) fs.writeFileSync(path.join(root, `BP/COPY.${copy}`), text);
  await client.begin(root, {capabilities: RICH});
  await client.ask('workspace/symbol', {query: 'COPY.599'});
  assert.strictEqual(client.progress[0], 'begin');
  assert.strictEqual(client.progress.at(-1), 'end');
  assert(client.progress.includes('report'));
  await client.end();
}

async function tellsFindings() {
  const client = await demo(undefined, text => text.replace('(PROD.ID, QTY', '(PROD.ID'));
  const found = await client.told_(INVOICE, all => all.length > 0, 'the finding');
  assert.deepStrictEqual(found.map(f => [f.code, f.severity, f.source, words(client, INVOICE, f.range)]),
    [['argument-count', 2, 'nib', 'PRICE.CALC']]);
  // The text mends it.
  const {text} = client.texts.get(INVOICE);
  const at = text.indexOf('(PROD.ID') + 8;
  client.edit(INVOICE, [[at, at, ', QTY']]);
  await client.told_(INVOICE, all => all.length === 0, 'the end of the finding');
  const end = client.texts.get(INVOICE).text.indexOf('   END\n', at);
  client.edit(INVOICE, [[end, end, '      LONELY = 1\nNOBODY:\n      RETURN\n']]);
  const hints = await client.told_(INVOICE, all => all.length > 1, 'what is not used');
  assert.deepStrictEqual(hints.filter(f => f.tags?.includes(1)).map(f => f.code).sort(), ['unused-label', 'unused-variable']);

  const actions = await client.ask('textDocument/codeAction', {
    textDocument: {uri: client.uri(INVOICE)}, range: hints[0].range, context: {diagnostics: [hints[0]]}});
  const silence = actions.find(action => /ilence/.test(action.title));
  const [change] = silence.edit.documentChanges;
  assert.strictEqual(change.textDocument.version, client.texts.get(INVOICE).version);
  const silenced = applied(client.texts.get(INVOICE).text, change.edits);
  client.edit(INVOICE, [[0, client.texts.get(INVOICE).text.length, silenced]]);
  await client.told_(INVOICE, all => all.length === hints.length - 1, 'silence');
  client.tell('textDocument/didClose', {textDocument: {uri: client.uri(INVOICE)}});
  await client.told_(INVOICE, all => all.length === 0, 'no findings of a closed text');
  await client.end();
}

async function completes() {
  const client = await demo();
  await client.read();
  for (const [typed, label, kind] of [
    ['      X = CUST.NA', 'CUST.NAME', 21],
    ['      X = ORDER.C', 'ORDER.COUNT', 6],
    ['      GOSUB PRINT.H', 'PRINT.HEAD', 18],
    ['      CALL PRI', 'PRICE.CALC', 17],
    ['      X = OCO', 'OCONV', 3],
    ['      $INCLUDE BP COMM', 'COMMON.INC', 17],
    ['      OPEN "DA', 'DATA', 19],
  ]) {
    const text = client.texts.get(INVOICE).text;
    const at = text.indexOf('      STOP\n*\nCHECK');
    client.edit(INVOICE, [[at, at, `${typed}\n`]]);
    const answer = await client.ask('textDocument/completion', client.asked(INVOICE, typed, typed.length));
    const item = answer.items.find(one => one.label === label);
    assert(item, `${label} is not offered: ${answer.items.map(one => one.label).slice(0, 20)}`);
    assert.strictEqual(item.kind, kind, label);
    if (label === 'OCONV') {
      assert.strictEqual(item.documentation, undefined);
      assert((await client.ask('completionItem/resolve', item)).documentation.value.length > 10);
    }
    const done = applied(client.texts.get(INVOICE).text, [item.textEdit]);
    assert(done.includes(typed.replace(/[A-Z.]*$/, label)), `${label} lands elsewhere`);
    client.edit(INVOICE, [[at, at + typed.length + 1, '']]);
  }
  await client.end();
}

async function explains() {
  const client = await demo();
  await client.read();
  const hover = (...place) => client.ask('textDocument/hover', client.asked(INVOICE, ...place));
  const conversion = await hover('OCONV(GRAND', 2);
  assert.strictEqual(conversion.contents.kind, 'markdown');
  assert(/^```mvbasic\nOCONV\(/.test(conversion.contents.value), conversion.contents.value);
  assert.strictEqual(words(client, INVOICE, conversion.range), 'OCONV');
  assert(/COMMON/.test((await hover('TODAY =', 1)).contents.value));
  assert.strictEqual(await hover('* An order', 5), null);

  const help = await client.ask('textDocument/signatureHelp', client.asked(INVOICE, 'CUSTOMER<CUST.GROUP>', 4));
  const [signature] = help.signatures;
  const [start, end] = signature.parameters[help.activeParameter].label;
  assert.strictEqual(signature.label.slice(start, end), 'GROUP', JSON.stringify(help));
  await client.end();

  const plain = await demo({});
  const told = await plain.ask('textDocument/hover', plain.asked(INVOICE, 'OCONV(GRAND', 2));
  assert.strictEqual(told.contents.kind, 'plaintext');
  await plain.end();
}

async function finds() {
  const client = await demo();
  client.open('BP MENU');
  const places = async (method, ...place) => (await client.ask(`textDocument/${method}`, {
    ...client.asked(INVOICE, ...place), context: {includeDeclaration: true}})).map(line);
  for (const [method, place, wanted] of [
    ['definition', ['CALL PRICE.CALC', 6], ['PRICE.CALC:1']],
    ['definition', ['COMMON.INC', 2], ['COMMON.INC:1']],
    ['definition', ['GOSUB PRINT.HEAD', 8], ['INVOICE:110']],
    ['definition', ['TODAY', 1], ['COMMON.INC:3']],
    ['references', ['GOSUB PRINT.LINE', 8], ['INVOICE:97', 'INVOICE:125']],
  ]) assert.deepStrictEqual(await places(method, ...place), wanted, `${method} of ${place}`);
  const everywhere = await places('references', 'F.DATA', 1);
  assert(everywhere.includes('COMMON.INC:3') && everywhere.some(at => /^CUSTOMER.ENTRY/.test(at)), String(everywhere));

  const lights = await client.ask('textDocument/documentHighlight', client.asked(INVOICE, 'SKIPPED', 1));
  assert.deepStrictEqual(lights.map(light => light.kind), [3, 3, 2, 2]);
  const textDocument = {uri: client.uri(INVOICE)};
  const symbols = await client.ask('textDocument/documentSymbol', {textDocument});
  assert(JSON.stringify(symbols).includes('"PRINT.HEAD"'));
  const found = await client.ask('workspace/symbol', {query: 'prcalc'});
  assert.strictEqual(found[0].name, 'PRICE.CALC');
  const folds = await client.ask('textDocument/foldingRange', {textDocument});
  assert(folds.some(fold => fold.startLine === 39 && fold.endLine === 53), JSON.stringify(folds));
  const {data} = await client.ask('textDocument/semanticTokens/full', {textDocument});
  assert(data.length > 500 && data.length % 5 === 0);
  client.edit(INVOICE, [[0, 0, 'X = 1\n']]);
  const next = await client.ask('textDocument/semanticTokens/full', {textDocument});
  client.edit(INVOICE, [[0, 6, '']]);
  const delta = await client.ask('textDocument/semanticTokens/full/delta', {textDocument, previousResultId: next.resultId});
  for (const {start, deleteCount, data: more} of delta.edits) next.data.splice(start, deleteCount, ...more);
  assert.deepStrictEqual(next.data, data);
  const part = await client.ask('textDocument/semanticTokens/range', {
    textDocument, range: {start: {line: 14, character: 0}, end: {line: 15, character: 0}}});
  assert.strictEqual(part.data[0], 14);
  assert(part.data.length < 40);
  await client.end();
}

async function formats() {
  const client = await demo();
  const options = {tabSize: 3, insertSpaces: true};
  const textDocument = {uri: client.uri(INVOICE)};
  const format = range => client.ask(`textDocument/${range ? 'rangeF' : 'f'}ormatting`, {textDocument, options, range});
  const {text} = client.texts.get(INVOICE);
  const laidOut = applied(text, await format());
  const code = one => one.trimEnd().split('\n').filter(row => !/^ *\*/.test(row)).slice(0, -1);
  assert.deepStrictEqual(code(laidOut), code(text));
  client.edit(INVOICE, [[0, text.length, laidOut]]);
  assert.deepStrictEqual(await format(), []);
  const flat = laidOut.replace(/^ +(?=[^ $])/gm, '').replace(/^(LOOP|REPEAT)$/gm, '\t$1  ');
  client.edit(INVOICE, [[0, laidOut.length, flat]]);
  assert.strictEqual(applied(flat, await format()), laidOut);
  const first = text.split('\n').findIndex(one => one.includes('IF LAST.DATE = ""'));
  const edits = await format({start: {line: first, character: 0}, end: {line: first + 4, character: 0}});
  assert.deepStrictEqual(edits.map(edit => edit.range.start.line), [0, 1, 2, 3].map(n => first + n));
  await client.end();
}

async function renames() {
  const client = await demo();
  const rename = (newName, ...place) => client.ask('textDocument/rename', {...client.asked(INVOICE, ...place), newName});
  const label = client.asked(INVOICE, 'GOSUB PRINT.HEAD', 8);
  assert.strictEqual((await client.ask('textDocument/prepareRename', label)).placeholder, 'PRINT.HEAD');
  const {documentChanges: [change]} = await rename('PAGE.HEAD', 'GOSUB PRINT.HEAD', 8);
  assert.deepStrictEqual(change.textDocument, {uri: client.uri(INVOICE), version: 1});
  const {text} = client.texts.get(INVOICE);
  assert.strictEqual(applied(text, change.edits), text.replace(/PRINT\.HEAD/g, 'PAGE.HEAD'));

  const shared = await rename('THE.FILE', 'F.DATA', 1);
  const uris = shared.documentChanges.map(one => path.basename(one.textDocument.uri));
  assert(uris.includes('COMMON.INC') && uris.includes('INVOICE') && uris.length > 2, String(uris));
  for (const {textDocument, edits} of shared.documentChanges) {
    const old = fs.readFileSync(new URL(textDocument.uri), 'latin1');
    assert(!/\bF\.DATA\b/.test(applied(old, edits).replace(/"[^"]*"|^\*.*/gm, '')), textDocument.uri);
  }
  for (const name of ['IF', '1X', '', 'A B', 'SKIPPED'])
    assert.strictEqual(await client.refusal('textDocument/rename',
      {...client.asked(INVOICE, 'PRINTED', 1), newName: name}), -32803, `"${name}"`);
  await client.end();
}

/** The same word behind characters of each length, in both ways to count. */
async function countsAsAgreed() {
  const text = '* ä\n      RATE = 1\n      PRINT "Öst€ 𝄞":RATE:"𝄞":RATE\n';
  for (const [units, starts] of [['utf-16', [6, 22, 32]], ['utf-8', [6, 27, 39]]]) {
    const client = new Client();
    await client.begin(account(`counts-${units}`), {units});
    client.open('BP X', text);
    const lights = await client.ask('textDocument/documentHighlight', client.asked('BP X', 'RATE', 1, 3));
    assert.deepStrictEqual(lights.map(light => light.range.start.character), starts.map((_, i) => lights.length && (
      client.at('BP X', 'RATE', 0, i + 1).character)), units);
    assert.deepStrictEqual(lights.map(light => light.range.start.character), starts, units);
    await client.end();
  }
}

async function takesAProgramAlone() {
  const client = new Client('--dialect', 'none');
  await client.begin(account('alone'), {rootUri: null});
  client.open(INVOICE);
  const [place] = await within(client.ask('textDocument/definition', client.asked(INVOICE, 'CALL PRICE.CALC', 6)), 'it');
  assert.strictEqual(line(place), 'PRICE.CALC:1');
  await client.end();
}

run([tellsProgress, tellsFindings, completes, explains, finds, formats, renames, countsAsAgreed,
  takesAProgramAlone]);
