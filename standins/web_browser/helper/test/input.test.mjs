import assert from 'node:assert/strict';
import { once } from 'node:events';
import { after, before, beforeEach } from 'node:test';
import { BrowserPage } from '../browser_page.mjs';
import { Input } from '../input.mjs';
import { test, TestBrowser } from './support.mjs';

let browser;
let input;
before(async () => {
  browser = await TestBrowser.start();
  input = new Input(browser.page);
});
after(() => browser.close());
beforeEach(() => (browser.reports.length = 0));

const kEnter = 13;
const kSpace = 32;
const kBackspace = 8;
const kTab = 9;

/** A key as a window sees it: down, its character if it has one, up. */
function press(vk, text = '', mods = 0) {
  input.key({ type: 'rawKeyDown', vk, text: '', mods });
  if (text) input.key({ type: 'char', vk: 0, text, mods });
  input.key({ type: 'keyUp', vk, text: '', mods });
}

const until = (expression) => browser.page.evaluate(`standin.waitUntil(() => (${expression}))`);
const focus = (id) => browser.page.evaluate(`document.getElementById("${id}").focus()`);

for (const [name, vk, text] of [['Enter', kEnter, '\r'], ['Space', kSpace, ' ']]) {
  test(`${name} presses the button that has the focus`, async () => {
    await browser.load('<input type=button id=b value=Update>');
    await focus('b');
    press(vk, text);
    // Enter clicks before its key is released, and no report may be left for the next test.
    const heard = (kind) => browser.reports.some(({ type }) => type === kind);
    while (!heard('click') || !heard('keyup')) await once(browser.page, 'report');
    assert.deepEqual(browser.reports.map(({ type }) => type).slice(0, 2), ['keydown', 'keypress']);
  });
}

test('keys write, delete and move to the next field', async () => {
  await browser.load('<input id=a><input id=b>');
  await focus('a');
  press(65, 'a');
  press(0, '\u00e9');
  press(66, 'b');
  press(kBackspace);
  assert.equal(await until('document.getElementById("a").value === "a\\u00e9"'), true);
  press(kTab);
  assert.equal(await until('document.activeElement.id === "b"'), true);
  press(kTab, '', 8);
  assert.equal(await until('document.activeElement.id === "a"'), true);
});

test('the wheel scrolls the page', async () => {
  await browser.load('<div style="height:5000px">');
  input.mouse({ type: 'mouseWheel', x: 10, y: 10, button: 'none', buttons: 0, count: 0, mods: 0,
                dx: 0, dy: 300 });
  assert.equal(await until('document.body.scrollTop === 300'), true);
});

test('of many moves at once the last one counts, and the press comes after it', async () => {
  await browser.load('<body style="margin:0"><div id=d style="height:100px">');
  await browser.page.evaluate(`void (() => {
    globalThis.heard = [];
    for (const type of ['mousemove', 'mousedown']) {
      document.addEventListener(type, (event) => globalThis.heard.push(type + event.clientX));
    }
  })()`);
  const at = (type, x, buttons) =>
    input.mouse({ type, x, y: 10, button: buttons ? 'left' : 'none', buttons, count: buttons, mods: 0 });
  for (let x = 1; x <= 50; x += 1) at('mouseMoved', x, 0);
  at('mousePressed', 50, 1);
  assert.equal(await until('globalThis.heard.at(-1) === "mousedown50"'), true);
  const moves = await browser.page.evaluate('globalThis.heard.length');
  assert.ok(moves < 20, `${moves} events`);
});

test('a button does not wait for a move that the engine leaves unanswered', async () => {
  const pipe = { on: () => {}, send: (_, { type }) => (type === 'mouseMoved' ? new Promise(() => {}) : Promise.resolve()) };
  const mouse = new Input(new BrowserPage(pipe, null));
  const at = (type, buttons) => mouse.mouse({ type, x: 1, y: 1, button: 'left', buttons, count: 1, mods: 0 });
  at('mouseMoved', 0);
  at('mousePressed', 1);
  at('mouseReleased', 0);
  await once(mouse, 'taken');
  assert.equal(mouse.taken.releases, 1);
});
