// The session itself: its beginning and end, clients that misbehave, and texts that stay the same on both sides.
'use strict';
const assert = require('assert');
const {spawn} = require('child_process');
const {Client, account, linesOf, run, within} = require('./client');

const frame = value => {
  const body = typeof value === 'string' ? value : JSON.stringify({jsonrpc: '2.0', ...value});
  return `Content-Length: ${Buffer.byteLength(body)}\r\n\r\n${body}`;
};
const codes = answer => [...answer.matchAll(/"code":(-\d+)/g)].map(match => Number(match[1]));
const INITIALIZE = frame({id: 1, method: 'initialize', params: {processId: null, rootUri: null, capabilities: {}}});

async function beginsAndEnds() {
  const client = new Client('--stdio');
  const capabilities = await client.begin(account('session'), {units: 'utf-8'});
  assert.strictEqual(capabilities.positionEncoding, 'utf-8');
  for (const name of ['completion', 'hover', 'signatureHelp', 'definition', 'references', 'documentHighlight',
    'documentSymbol', 'workspaceSymbol', 'foldingRange', 'documentFormatting', 'documentRangeFormatting', 'rename',
    'codeAction', 'semanticTokens']) assert(capabilities[`${name}Provider`], name);
  assert.strictEqual(await client.refusal('initialize', {capabilities: {}}), -32600);
  assert.strictEqual(await client.refusal('textDocument/nonsense', {}), -32601);
  assert.strictEqual(await client.refusal('textDocument/hover', {textDocument: 5}), -32602);
  client.tell('$/nonsense', {});
  await client.ask('shutdown');
  assert.strictEqual(await client.refusal('textDocument/hover', {}), -32600);
  client.tell('exit');
  assert.strictEqual(await within(client.ended, 'the end'), 0);
}

async function refusesWhatIsNoConversation() {
  const hover = frame({id: 2, method: 'textDocument/hover', params: {}});
  for (const [pieces, wanted] of [
    [[hover, frame({method: 'textDocument/didOpen', params: {}})], [-32002]],
    [[frame({method: 'exit'})], []],
    [[], []],
    [[INITIALIZE, 'Content-Length: 50\r\n\r\n{"jsonrpc'], []],
    [[INITIALIZE, 'Content-Length: 1073741824\r\n\r\n', '{"jsonrpc"'], [-32600]],
    [['x'.repeat(10000)], [-32600]],
    [[INITIALIZE, frame('{"id":'), frame('[]'), frame({id: 3, method: 'textDocument/nonsense'})],
      [-32700, -32600, -32601]],
    [[INITIALIZE, frame('['.repeat(1 << 20))], [-32600]],
  ]) {
    const {answer, code} = await new Client().raw(...pieces);
    assert.deepStrictEqual(codes(answer), wanted, String(pieces).slice(0, 80));
    assert.strictEqual(code, 1, String(pieces).slice(0, 80));
  }
}

async function endsWithItsClient() {
  const parent = spawn('sleep', ['60']);
  const client = new Client();
  await client.begin(null, {processId: parent.pid});
  parent.kill('SIGKILL');
  assert.strictEqual(await within(client.ended, 'the end of the server'), 1);
}

async function takesEditsOutsideTheText() {
  const client = new Client();
  await client.begin(account('outside'));
  client.open('BP X', 'A = 1\n');
  const textDocument = {uri: client.uri('BP X'), version: 2};
  const bad = (start, end) => client.tell('textDocument/didChange', {
    textDocument, contentChanges: [{range: {start: {line: start, character: 0}, end: {line: end, character: 0}}, text: ''}]});
  bad(7, 9);
  bad(-1, 0);
  client.tell('textDocument/didChange', {textDocument: {uri: 'file:///nowhere', version: 2}, contentChanges: []});
  client.tell('textDocument/didChange', null);
  assert.strictEqual(await client.refusal('textDocument/documentSymbol', {textDocument: {uri: 'file:///nowhere'}}), -32602);
  assert.strictEqual(client.log.length, 4);
  await client.end();
}

async function cancels() {
  const client = new Client();
  await client.begin(account('cancelled'));
  client.open('BP INVOICE');
  const params = {textDocument: {uri: client.uri('BP INVOICE')}};
  const requests = [];
  for (let i = 100; i < 200; ++i) {
    requests.push(frame({id: i, method: 'textDocument/documentSymbol', params}));
    requests.push(frame({method: '$/cancelRequest', params: {id: i}}));
  }
  const answers = new Set();
  let text = '';
  let refused = 0;
  const all = new Promise(resolve => client.process.stdout.on('data', data => {
    text += data;
    for (const match of text.matchAll(/"id":(1\d\d),/g)) answers.add(match[1]);
    refused = text.match(/-32800/g)?.length ?? 0;
    if (answers.size === 100) resolve();
  }));
  client.process.stdin.write(requests.join(''));
  await within(all, 'an answer to each request');
  assert(refused > 0, 'none was cancelled');
  await client.end();
}

/** What the server makes of a text tells whether it has the same one. */
async function known(client, name) {
  const textDocument = {uri: client.uri(name)};
  const answers = [];
  for (const method of ['semanticTokens/full', 'documentSymbol', 'foldingRange'])
    answers.push(await client.ask(`textDocument/${method}`, {textDocument}));
  delete answers[0].resultId;
  answers.push(await client.ask('textDocument/formatting', {textDocument, options: {tabSize: 3, insertSpaces: true}}));
  return answers;
}

async function keepsTheTextOfRandomEdits() {
  const WORDS = ['A', ' = ', '1', '\n', '\r\n', 'IF A THEN\n', 'END\n', '"ä€𝄞"', '* 𝄞ü\n', 'LABEL:\n', 'GOSUB LABEL\n',
    '\t', '  ', ':', 'FOR I = 1 TO 9\n', 'NEXT I\n', 'é'];
  let seed = Number(process.env.NIB_TEST_SEED ?? 1);
  const random = below => {
    seed = (Math.imul(seed, 1103515245) + 12345) >>> 0;
    return (seed >>> 8) % below;
  };
  const boundary = (text, offset) => { // not within a character or a line end
    while (/^[\udc00-\udfff]/.test(text.slice(offset)) || text.slice(offset - 1, offset + 1) === '\r\n') --offset;
    return offset;
  };
  for (const units of ['utf-16', 'utf-8']) {
    const client = new Client();
    await client.begin(account(`edited-${units}`), {units, capabilities: {
      textDocument: {documentSymbol: {hierarchicalDocumentSymbolSupport: true}}}});
    client.open('BP VAT.CALC');
    for (let round = 0; round < 60; ++round) {
      for (let notice = 0; notice < 5; ++notice) {
        let text = client.texts.get('BP VAT.CALC').text;
        const edits = [];
        for (let i = random(3); i >= 0; --i) {
          const start = boundary(text, random(text.length + 1));
          const end = boundary(text, Math.min(start + random(random(8) ? 6 : 40), text.length));
          let words = '';
          for (let n = random(8); n > 0; --n) words += WORDS[random(WORDS.length)];
          // A line feed behind a carriage return would belong to it.
          if (text[start - 1] === '\r' || words.endsWith('\r') || text[end] === '\n') words = `${words}*`;
          if (text[start - 1] === '\r') words = `*${words}`;
          edits.push([start, Math.max(start, end), words]);
          text = text.slice(0, start) + words + text.slice(Math.max(start, end));
        }
        client.edit('BP VAT.CALC', edits);
      }
      const edited = await known(client, 'BP VAT.CALC');
      client.open('BP FRESH', client.texts.get('BP VAT.CALC').text);
      assert.deepStrictEqual(edited, await known(client, 'BP FRESH'), `seed ${seed}, round ${round}, ${units}`);
      client.tell('textDocument/didClose', {textDocument: {uri: client.uri('BP FRESH')}});
    }
    assert(linesOf(client.texts.get('BP VAT.CALC').text).length > 10);
    assert.deepStrictEqual(client.log, []);
    await client.end();
  }
}

run([beginsAndEnds, refusesWhatIsNoConversation, endsWithItsClient, takesEditsOutsideTheText, cancels,
  keepsTheTextOfRandomEdits]);
