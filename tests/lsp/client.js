// A client of nib-lsp on the protocol's own library, and the few checks that its scenarios need.
'use strict';
const fs = require('fs');
const path = require('path');
const {spawn} = require('child_process');
const assert = require('assert');
const {pathToFileURL} = require('url');
const rpc = require('vscode-languageserver-protocol/node');

const [program, sample, work] = process.argv.slice(2);
const TIMEOUT = 20000;

/** The account DEMO, in a folder of its own. */
function account(name) {
  const folder = path.join(work, name);
  fs.cpSync(sample, folder, {recursive: true});
  return folder;
}

function within(promise, what) {
  let timer;
  const late = new Promise((_, reject) => {
    timer = setTimeout(() => reject(new Error(`waited too long for ${what}`)), TIMEOUT);
  });
  return Promise.race([promise, late]).finally(() => clearTimeout(timer));
}

/** Lines of a text, as the protocol cuts them. */
const linesOf = text => text.split(/\r\n|\r|\n/);

class Client {
  constructor(...options) {
    this.process = spawn(program, options, {stdio: ['pipe', 'pipe', 'inherit']});
    this.ended = new Promise(resolve => this.process.on('exit', (code, signal) => resolve(signal || code)));
    this.findings = new Map();
    this.log = [];
    this.progress = [];
    this.texts = new Map();
  }

  /** For bytes that no library would send: answers all that comes back until the server ends. */
  async raw(...pieces) {
    let answer = '';
    this.process.stdout.on('data', data => { answer += data; });
    this.process.stdin.on('error', () => {});
    for (const piece of pieces) this.process.stdin.write(piece);
    this.process.stdin.end();
    const code = await within(this.ended, 'the end of the server');
    return {answer, code};
  }

  async begin(root, {units = 'utf-16', capabilities = {}, ...more} = {}) {
    this.units = units;
    this.connection = rpc.createProtocolConnection(this.process.stdout, this.process.stdin);
    this.connection.onNotification('textDocument/publishDiagnostics', told => {
      this.findings.set(told.uri, told);
      this.told?.();
    });
    this.connection.onNotification('window/logMessage', told => this.log.push(told.message));
    this.connection.onNotification('$/progress', told => this.progress.push(told.value.kind));
    this.connection.onRequest('window/workDoneProgress/create', () => null);
    this.connection.listen();
    this.root = root;
    const answer = await this.ask('initialize', {
      processId: process.pid, rootUri: root ? pathToFileURL(root).href : null,
      capabilities: {general: {positionEncodings: [units]}, ...capabilities}, ...more});
    this.tell('initialized', {});
    return answer.capabilities;
  }

  ask(method, params) { return within(this.connection.sendRequest(method, params), method); }
  tell(method, params) { return this.connection.sendNotification(method, params); }

  /** The error number that a request is refused with. */
  async refusal(method, params) {
    return this.ask(method, params).then(() => 0, error => error.code);
  }

  uri(name) { return pathToFileURL(path.join(this.root, ...name.split(' '))).href; }

  /** All programs of the account are known. */
  read() { return this.ask('workspace/symbol', {query: ''}); }

  /** Opens an item, "BP INVOICE", with the text that it has on disk or another one. */
  open(name, text = fs.readFileSync(path.join(this.root, ...name.split(' ')), 'utf8')) {
    this.texts.set(name, {text, version: 1});
    this.tell('textDocument/didOpen', {
      textDocument: {uri: this.uri(name), languageId: 'mvbasic', version: 1, text}});
  }

  /** Where `words` stand for the n-th time, `inside` units further on. */
  at(name, words, inside = 0, nth = 1) {
    const text = this.texts.get(name).text;
    let offset = -1;
    for (let i = 0; i < nth; ++i) offset = text.indexOf(words, offset + 1);
    assert(offset >= 0, `${name} has no ${words}`);
    return this.place(text, offset + inside);
  }
  place(text, offset) {
    const lines = linesOf(text.slice(0, offset));
    const last = lines[lines.length - 1];
    const character = this.units === 'utf-8' ? Buffer.byteLength(last) : last.length;
    return {line: lines.length - 1, character};
  }
  asked(name, words, inside, nth) {
    return {textDocument: {uri: this.uri(name)}, position: this.at(name, words, inside, nth)};
  }

  /** Edits of one notice, each of the text that the one before left: [start, end, with] by offsets. */
  edit(name, edits) {
    const known = this.texts.get(name);
    const contentChanges = edits.map(([start, end, text]) => {
      const range = {start: this.place(known.text, start), end: this.place(known.text, end)};
      known.text = known.text.slice(0, start) + text + known.text.slice(end);
      return {range, text};
    });
    ++known.version;
    this.tell('textDocument/didChange', {
      textDocument: {uri: this.uri(name), version: known.version}, contentChanges});
  }

  /** Findings of an item once there are such as `wanted` takes. */
  async told_(name, wanted, what) {
    const uri = this.uri(name);
    return within((async () => {
      for (;;) {
        const told = this.findings.get(uri);
        if (told && wanted(told.diagnostics)) return told.diagnostics;
        await new Promise(resolve => { this.told = resolve; });
      }
    })(), what).catch(error => {
      throw new Error(`${error.message}: ${JSON.stringify(this.findings.get(uri))}`);
    });
  }

  async end() {
    await this.ask('shutdown');
    this.tell('exit');
    assert.strictEqual(await within(this.ended, 'the end of the server'), 0);
  }
}

/** The text that edits of the protocol make of one. */
function applied(text, edits, units = 'utf-16') {
  const lines = linesOf(text);
  const starts = [0];
  for (const match of text.matchAll(/\r\n|\r|\n/g)) starts.push(match.index + match[0].length);
  const offset = ({line, character}) => {
    const inside = units === 'utf-8' ? Buffer.from(lines[line]).subarray(0, character).toString().length : character;
    return starts[line] + inside;
  };
  const sorted = edits.map(e => [offset(e.range.start), offset(e.range.end), e.newText]).sort((a, b) => b[0] - a[0]);
  for (const [start, end, newText] of sorted) text = text.slice(0, start) + newText + text.slice(end);
  return text;
}

/** Runs the scenarios, or those that are named. */
async function run(scenarios) {
  let failed = 0;
  const named = process.argv.slice(5);
  for (const scenario of scenarios.filter(one => named.length === 0 || named.includes(one.name))) {
    try {
      await scenario();
      console.log(`passed ${scenario.name}`);
    } catch (error) {
      failed = 1;
      console.log(`FAILED ${scenario.name}\n${error.stack}`);
    }
  }
  process.exit(failed);
}

module.exports = {Client, account, applied, linesOf, run, within};
