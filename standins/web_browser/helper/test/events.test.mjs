import assert from 'node:assert/strict';
import { once } from 'node:events';
import { after, before, beforeEach } from 'node:test';
import { kGet, test, TestBrowser } from './support.mjs';

let browser;
before(async () => (browser = await TestBrowser.start()));
after(() => browser.close());
beforeEach(() => (browser.reports.length = 0));

const kPage = `<body style="margin:0"><div id=a style="height:50px">a</div>
  <div id=b style="height:50px">b</div><button id=off disabled style="height:50px">c</button>
  <br><a id=link href="file:///C:/other.html" target=_blank>link</a>`;

const clicks = () => browser.reports.filter(({ type }) => type === 'click');

/** Events arrive in order: once the marker's click has arrived, so has everything before it. */
async function upToMarker() {
  await browser.page.evaluate("document.body.click()");
  while (clicks().length === 0) await once(browser.page, 'report');
}

/** A member of the window's event as the host sees it while it handles that event. */
async function ofEvent(number, ...path) {
  const ask = async (object, name) => JSON.parse(await browser.page.answer(browser.page.generation,
    { h: object.h, n: name, k: kGet, a: [], e: number })).v;
  let value = await ask(browser.document, 'parentWindow');
  for (const name of ['event', ...path]) value = await ask(value, name);
  return value;
}

test('a click is reported with a number under which the window has its event', async () => {
  await browser.load(kPage);
  await browser.click({ x: 10, y: 60 });
  while (clicks().length === 0) await once(browser.page, 'report');
  const [{ n }] = clicks();
  assert.equal(await ofEvent(n, 'srcElement', 'id'), 'b');
  assert.equal(await ofEvent(n, 'clientY'), 60);
  assert.deepEqual(await ofEvent(0), { h: 0 });
});

test('each event keeps its own snapshot until it is forgotten', async () => {
  await browser.load(kPage);
  await browser.click({ x: 10, y: 10 });
  await browser.click({ x: 10, y: 60 });
  while (clicks().length < 2) await once(browser.page, 'report');
  const [first, second] = clicks();
  assert.equal(await ofEvent(second.n, 'srcElement', 'id'), 'b');
  assert.equal(await ofEvent(first.n, 'srcElement', 'id'), 'a');
  await browser.page.evaluate(`standin.forget(${first.n})`);
  assert.deepEqual(await ofEvent(first.n), { h: 0 });
});

test('a press on one element and release on another is not a click', async () => {
  await browser.load(kPage);
  await browser.click({ x: 10, y: 10 }, { x: 10, y: 60 });
  await upToMarker();
  assert.equal(clicks().length, 1);
  assert.equal(await ofEvent(clicks()[0].n, 'srcElement', 'tagName'), 'BODY');
});

test('a click on a disabled button is not reported', async () => {
  await browser.load(kPage);
  await browser.click({ x: 10, y: 120 });
  await upToMarker();
  assert.equal(await ofEvent(clicks()[0].n, 'srcElement', 'tagName'), 'BODY');
});

test('a link is not followed by the page but reported with its click', async () => {
  await browser.load(kPage);
  const generation = browser.page.generation;
  await browser.page.evaluate('document.getElementById("link").click()');
  while (clicks().length === 0) await once(browser.page, 'report');
  assert.deepEqual(clicks()[0].follow, { url: 'file:///C:/other.html', target: '_blank' });
  assert.equal(browser.page.generation, generation);
});

test('a form is not sent by the page but reported with its fields', async () => {
  await browser.load('<form action="next.html"><input name=q value="a b"><input type=submit id=s></form>');
  await browser.page.evaluate('document.getElementById("s").click()');
  while (!browser.reports.some(({ type }) => type === 'submit')) await once(browser.page, 'report');
  const { follow } = browser.reports.find(({ type }) => type === 'submit');
  assert.equal(follow.url, 'file:///C:/next.html?q=a+b');
});

test('a drag is cancelled and reported', async () => {
  await browser.load('<body style="margin:0"><div draggable=true style="width:50px; height:50px">x</div>');
  const press = { button: 'left', buttons: 1, clickCount: 1 };
  const send = (type, x) =>
    browser.page.send('Input.dispatchMouseEvent', { type, x, y: 20, ...press });
  await browser.page.evaluate('void document.addEventListener("dragstart",' +
    ' (event) => { globalThis.cancelled = event.defaultPrevented; })');
  await send('mousePressed', 20);
  for (const x of [25, 30, 40]) await send('mouseMoved', x);
  while (!browser.reports.some(({ type }) => type === 'dragstart')) await once(browser.page, 'report');
  await send('mouseReleased', 40);
  assert.equal(await browser.page.evaluate('globalThis.cancelled'), true);
});

test('Tab leaves the page only from its last stop', async () => {
  await browser.load('<input id=a><input id=b><input id=c disabled>');
  await browser.page.evaluate('document.getElementById("a").focus()');
  assert.equal(await browser.page.evaluate('standin.leavesByTab(false)'), false);
  assert.equal(await browser.page.evaluate('standin.leavesByTab(true)'), true);
  await browser.page.evaluate('document.getElementById("b").focus()');
  assert.equal(await browser.page.evaluate('standin.leavesByTab(false)'), true);
});
