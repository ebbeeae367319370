import assert from 'node:assert/strict';
import { once } from 'node:events';
import { after, before } from 'node:test';
import { kMethod, test, TestBrowser } from './support.mjs';

let added = 0;
let browser;
let frames;
before(async () => {
  browser = await TestBrowser.start();
  await browser.page.send('Performance.enable');
  frames = browser.frames;
  await frames.resize(400, 300);
  await browser.load('<body><div id=list></div></body>');
});
after(() => browser.close());

async function layouts() {
  const { metrics } = await browser.page.send('Performance.getMetrics');
  return metrics.find(({ name }) => name === 'LayoutCount').value;
}

/** Adds so many paragraphs by calls of a host; how often the browser laid the page out meanwhile. */
async function layoutsOfAdding(count) {
  const list = await browser.byId('list');
  const before = await layouts();
  for (let i = 0; i < count; i += 1) {
    const { v } = await browser.call(list, 'insertAdjacentHTML', kMethod, 'afterBegin', `<p>${added += 1}</p>`);
    assert.deepEqual(v, { u: 1 });
  }
  return (await layouts()) - before;
}

test('a page is not laid out for pictures while none are taken', async () => {
  await frames.fresh();
  const drawing = await layoutsOfAdding(1000);
  frames.pause();
  const number = await frames.fresh();
  const paused = await layoutsOfAdding(1000);
  assert.equal(frames.last, number);
  assert.ok(paused < drawing / 5, `${paused} layouts after ${drawing}`);
  assert.equal(await browser.page.evaluate('document.visibilityState'), 'visible');
  assert.equal(await browser.page.evaluate('document.hasFocus()'), true);

  const next = once(frames, 'frame');
  frames.resume();
  await next;
  assert.ok((await layoutsOfAdding(1000)) > 5 * paused);
});

test('a picture that is requested while none are taken shows the page, and further ones follow', async () => {
  frames.pause();
  await layoutsOfAdding(1);
  const number = await frames.fresh();
  assert.equal(number, frames.last);
  frames.resume();
  const next = once(frames, 'frame');
  await layoutsOfAdding(1);
  await next;
});
