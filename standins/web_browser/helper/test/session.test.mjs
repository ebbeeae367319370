import assert from 'node:assert/strict';
import { spawn } from 'node:child_process';
import { on, once } from 'node:events';
import fs from 'node:fs';
import net from 'node:net';
import path from 'node:path';
import { after, before } from 'node:test';
import { PageInspector } from '../inspect_client.mjs';
import { LineConnection } from '../wire.mjs';
import { kGet, kMarkupOnly, kMethod, kPut, makePrefix, test } from './support.mjs';

/** Plays the host: accepts the helper's two connections, makes calls, and collects the notices. */
class FakeHost {
  notices = [];
  #lastCall = 0;
  #paints = true;
  #unpainted = 0;

  static async start(files) {
    const host = new FakeHost();
    host.prefix = makePrefix(files);
    host.temporary = path.join(host.prefix, 'tmp');
    fs.mkdirSync(host.temporary);
    host.inspectionFile = path.join(host.prefix, 'inspect.json');
    host.server = net.createServer();
    // Both connections may arrive before the first is handled.
    host.connections = on(host.server, 'connection');
    await new Promise((resolve) => host.server.listen(0, '127.0.0.1', resolve));
    const main = new URL('../main.mjs', import.meta.url).pathname;
    host.helper = spawn(process.execPath, [main, String(host.server.address().port), 'secret'], {
      stdio: 'ignore',
      env: { ...process.env, WINEPREFIX: host.prefix, TMPDIR: host.temporary,
             WEB_BROWSER_STANDIN_INSPECT: host.inspectionFile },
    });
    host.helperEnd = once(host.helper, 'exit');
    host.calls = await host.#accept('calls');
    host.events = await host.#accept('notices');
    host.events.on('message', (notice) => host.#notice(notice));
    host.inspector = await PageInspector.connect(host.inspectionFile);
    return host;
  }

  async #accept(role) {
    const [socket] = (await this.connections.next()).value;
    const connection = new LineConnection(socket);
    const [greeting] = await once(connection, 'message');
    assert.deepEqual(greeting, { token: 'secret', role });
    return connection;
  }

  #notice(notice) {
    this.notices.push(notice);
    if (notice.t === 'beforeNavigate') this.calls.send({ op: 'decide', n: notice.n, cancel: false });
    if (notice.t === 'frame') this.#frame(notice.n);
    if (notice.t === 'whereabouts') this.calls.send({ op: 'whereabouts', x: 100, y: 200, w: 800, h: 600 });
    this.events.emit(notice.t, notice);
  }

  #frame(n) {
    this.#unpainted = n;
    if (this.#paints) this.calls.send({ op: 'painted', n });
  }

  /** Whether the host paints what it gets; it catches up when it starts again. */
  set paints(paints) {
    this.#paints = paints;
    if (paints && this.#unpainted) this.calls.send({ op: 'painted', n: this.#unpainted });
  }

  /** Paints and makes a call, both in one message to the helper. */
  paintAndCall(op) {
    this.#paints = true;
    const painting = { op: 'painted', n: this.#unpainted };
    this.calls.sendJson([painting, { i: ++this.#lastCall, op }].map((line) => JSON.stringify(line)).join('\n'));
  }

  async call(op, details) {
    const i = ++this.#lastCall;
    this.calls.send({ i, op, ...details });
    for (;;) {
      const [answer] = await once(this.calls, 'message');
      if (answer.i === i) return answer;
    }
  }

  async load(name) {
    const complete = once(this.events, 'complete');
    await this.call('navigate', { url: `C:\\${name}`, flags: kMarkupOnly });
    return (await complete)[0];
  }
}

let host;
before(async () => {
  host = await FakeHost.start({
    'page.html': '<body style="margin:0"><div id=d style="height:40px; width:60px">\u00e4</div>',
  });
});
after(async () => {
  host.helper.kill();
  await host.helperEnd;
  host.server.close();
  fs.rmSync(host.prefix, { recursive: true });
});

test('a host loads a page and calls its document', async () => {
  const { g, url } = await host.load('page.html');
  assert.equal(url, 'file:///C:/page.html');
  const kinds = host.notices.map(({ t }) => t).filter((t) => t !== 'frame');
  assert.deepEqual(kinds, ['beforeNavigate', 'navigated', 'complete']);
  const { v: document, g: generation } = await host.call('document');
  assert.equal(generation, g);
  const all = (await host.call('invoke', { g, h: document.h, n: 'all', k: kGet, a: [] })).v;
  const div = (await host.call('invoke', { g, h: all.h, n: 'item', k: kMethod, a: ['d'] })).v;
  const text = await host.call('invoke', { g, h: div.h, n: 'innerHTML', k: kGet, a: [], r: [[g, all.h]] });
  assert.equal(text.v, '\u00e4');
  const gone = await host.call('invoke', { g, h: all.h, n: 'length', k: kGet, a: [] });
  assert.equal(gone.e, 0x80010108);
});

/**
 * Makes many calls as the host, during which the helper has time for everything that does not wait
 * for the host.
 */
async function busy() {
  for (let i = 0; i < 200; i += 1) await host.call('invoke', { ...(await documentOf()), n: 'title', k: kGet, a: [] });
}

async function documentOf() {
  const { v, g } = await host.call('document');
  return { ...v, g };
}

/**
 * Stops the host's painting, asks, and demands that there is no answer before the host has painted.
 */
async function isAnsweredAfterPainting(ask) {
  host.paints = false;
  let isAnswered = false;
  const answer = ask().then((value) => {
    isAnswered = true;
    return value;
  });
  await once(host.events, 'frame');
  // Time for everything that does not wait for the host.
  for (let i = 0; i < 5; i += 1) await host.inspector.screenshot();
  assert.equal(isAnswered, false);
  host.paints = true;
  return answer;
}

test('the page is settled when the host has painted a picture of it', async () => {
  const earlier = host.notices.length;
  await isAnsweredAfterPainting(() => host.inspector.settled());
  const [{ data }] = host.notices.slice(earlier).filter(({ t }) => t === 'frame');
  assert.ok(Buffer.from(data, 'base64').subarray(1, 4).equals(Buffer.from('PNG')));
});

test('the page is read when the host has painted, without another picture', async () => {
  const earlier = host.notices.length;
  const text = await isAnsweredAfterPainting(() => host.inspector.eval('document.body.innerText'));
  assert.equal(text, '\u00e4');
  assert.deepEqual(host.notices.slice(earlier).map(({ t, data }) => [t, data]), [['frame', undefined]]);
});

test('the page is not settled while the host handles one of its events', async () => {
  const reported = once(host.events, 'event');
  await host.inspector.eval('document.getElementById("d").click()');
  const [{ g, n }] = await reported;
  let isSettled = false;
  const settling = host.inspector.settled().then(() => (isSettled = true));
  await busy();
  assert.equal(isSettled, false);
  host.calls.send({ op: 'handled', g, n });
  await settling;
});

test('what is read while the host calls is read again', async () => {
  host.paints = false;
  const reading = host.inspector.eval('(globalThis.readings = (globalThis.readings ?? 0) + 1)');
  await once(host.events, 'frame');
  // Before the page can have been read.
  host.paintAndCall('document');
  assert.equal(await reading, 2);
  assert.equal(await host.inspector.eval('readings'), 2);
});

test('a wait continues if the host changes the page back before it waits for messages', async () => {
  const setTitle = async (value) => host.call('invoke', { ...(await documentOf()), n: 'title', k: kPut, a: [value] });
  host.paints = false;
  const waiting = host.inspector.waitFor('document.title !== "busy" && document.title');
  await setTitle('busy');
  await setTitle('half');
  await busy();
  await setTitle('done');
  host.paints = true;
  assert.equal(await waiting, 'done');
});

test('a host that is at work on the page gets no pictures until it paints', async () => {
  const pictures = () => host.notices.filter(({ t }) => t === 'frame').length;
  const { h: document, g } = await documentOf();
  const all = (await host.call('invoke', { g, h: document, n: 'all', k: kGet, a: [] })).v;
  const div = (await host.call('invoke', { g, h: all.h, n: 'item', k: kMethod, a: ['d'] })).v;
  const show = (text) => host.call('invoke', { g, h: div.h, n: 'innerText', k: kPut, a: [text] });
  host.paints = false;
  const work = async (calls) => {
    for (let i = 0; i < calls; i += 1) await show(`${i}`);
  };
  const picture = once(host.events, 'frame');
  await show('unpainted');
  await picture;
  await work(300);
  // Answered by the browser after everything that was under way.
  await host.inspector.accessibility();
  await work(10);
  const before = pictures();
  await work(1000);
  assert.equal(pictures(), before);

  const next = once(host.events, 'frame');
  host.paints = true;
  await next;
  assert.ok((await host.inspector.screenshot()).length > 0);
  assert.equal(await host.inspector.eval('d.innerText'), '999');
  const further = once(host.events, 'frame');
  await show('\u00e4');
  await further;
});

test('reports how much input the page has handled', async () => {
  assert.deepEqual(await host.inspector.taken(), { releases: 0, keys: 0 });
  const mouse = { op: 'mouse', x: 10, y: 10, button: 'left', count: 1, mods: 0 };
  host.calls.send({ ...mouse, type: 'mousePressed', buttons: 1 });
  host.calls.send({ ...mouse, type: 'mouseReleased', buttons: 0 });
  await host.inspector.hasTaken({ releases: 1 });
  for (const type of ['rawKeyDown', 'keyUp']) host.calls.send({ op: 'key', type, vk: 65, text: '', mods: 0 });
  await host.inspector.hasTaken({ keys: 1 });
  assert.deepEqual(await host.inspector.taken(), { releases: 1, keys: 1 });
});

test('a rectangle comes with the screen position of the page', async () => {
  assert.deepEqual(await host.inspector.rect('#d'),
    { x: 0, y: 0, width: 60, height: 40, origin: { x: 100, y: 200, width: 800, height: 600 } });
  assert.deepEqual(await host.inspector.middle('#d'), { x: 130, y: 220 });
  await assert.rejects(host.inspector.rect('#nobody'), /No element #nobody/);
});

test('a wait ends with the change it waits for, also on the next page', async () => {
  const waiting = host.inspector.waitFor('document.getElementById("d").title');
  await host.inspector.eval('document.getElementById("d").title = "changed"');
  assert.equal(await waiting, 'changed');
  const next = host.inspector.waitFor('document.getElementById("d").title === "" && 7');
  await host.load('page.html');
  assert.equal(await next, 7);
  await assert.rejects(host.inspector.waitFor('nonsense'), /nonsense is not defined/);
});

test('a question is given up if there is no answer within the limit', async () => {
  const hasty = await PageInspector.connect(host.inspectionFile, () => 50);
  await assert.rejects(hasty.waitFor('false'), /^Error: Not in time: false$/);
  hasty.close();
  await assert.rejects(PageInspector.connect(`${host.inspectionFile}.none`, () => 50), /^Error: Not in time: /);
});

test('requests and pictures can be inspected', async () => {
  assert.deepEqual((await host.inspector.requests())[0], { url: 'file:///C:/page.html', refused: false });
  const picture = await host.inspector.screenshot();
  assert.ok(picture.subarray(1, 4).equals(Buffer.from('PNG')));
});

test('a stranger without the token gets no answer', async () => {
  const { port } = JSON.parse(fs.readFileSync(host.inspectionFile, 'utf8'));
  const stranger = new LineConnection(net.connect(port, '127.0.0.1'));
  const end = once(stranger, 'end');
  stranger.send({ token: 'guess', id: 1, op: 'eval', expression: '1' });
  await end;
});

test('the end of the host ends the browser and leaves no file behind', async () => {
  host.calls.close();
  const [code] = await host.helperEnd;
  assert.equal(code, 0);
  assert.deepEqual(fs.readdirSync(host.temporary), []);
});
