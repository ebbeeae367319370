import assert from 'node:assert/strict';
import { EventEmitter, on, once } from 'node:events';
import { after, before } from 'node:test';
import { Frames } from '../frames.mjs';
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

/** Adds paragraphs until the browser has laid the page out ten times; how many it took. */
async function additionsForTenLayouts() {
  const kStep = 20;
  let count = 0;
  for (let laidOut = 0; laidOut < 10; count += kStep) laidOut += await layoutsOfAdding(kStep);
  return count;
}

test('a page is not laid out for pictures while none are taken', async () => {
  const count = await additionsForTenLayouts();
  frames.pause();
  const number = await frames.fresh();
  const paused = await layoutsOfAdding(count);
  assert.equal(frames.last, number);
  assert.ok(paused < 3, `${paused} layouts while ${count} paragraphs were added`);
  assert.equal(await browser.page.evaluate('document.visibilityState'), 'visible');
  assert.equal(await browser.page.evaluate('document.hasFocus()'), true);

  const next = once(frames, 'frame');
  frames.resume();
  await next;
  await additionsForTenLayouts();
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

/** Width and height of a picture of the page. The frame that changes its size may come without one. */
async function sizeOfPicture() {
  let png;
  while (png === undefined) png = await frames.picture();
  const bytes = Buffer.from(png, 'base64');
  return [bytes.readUInt32BE(16), bytes.readUInt32BE(20)];
}

test('a picture has the size of the window, and a zoomed page has fewer pixels of its own', async () => {
  await frames.resize(600, 450, 1.5);
  assert.equal(frames.zoom, 1.5);
  assert.equal(await browser.page.evaluate('`${innerWidth} x ${innerHeight}`'), '400 x 300');
  assert.deepEqual(await sizeOfPicture(), [600, 450]);

  await frames.resize(500, 200);
  assert.equal(await browser.page.evaluate('`${innerWidth} x ${innerHeight}`'), '500 x 200');
  assert.deepEqual(await sizeOfPicture(), [500, 200]);
});

test('a window without an area leaves the page its size', async () => {
  await frames.resize(500, 200);
  await frames.resize(0, 200, 2);
  await frames.resize(500, 0, 2);
  assert.equal(frames.zoom, 1);
  assert.deepEqual(await sizeOfPicture(), [500, 200]);
});

/** A page that never changes and counts the frames that are drawn of it at a time. Emits 'capture'. */
class PageAtRest extends EventEmitter {
  drawing = 0;
  mostDrawing = 0;

  async send(_method, { screenshot } = {}) {
    this.mostDrawing = Math.max(this.mostDrawing, this.drawing += 1);
    await new Promise(setImmediate);
    this.drawing -= 1;
    if (screenshot) this.emit('capture');
    return { hasDamage: false, screenshotData: 'the page' };
  }
}

test('a page at rest is captured from time to time, and its picture is emitted once', async () => {
  const page = new PageAtRest();
  const atRest = new Frames(page);
  const pictures = [];
  atRest.on('frame', (picture) => pictures.push(picture));
  const captures = on(page, 'capture');
  await atRest.start();
  for (let i = 0; i < 3; i += 1) await captures.next();
  assert.deepEqual(pictures, [{ n: 1, data: 'the page' }]);
});

test('frames are drawn one at a time', async () => {
  const page = new PageAtRest();
  const busy = new Frames(page);
  await Promise.all([busy.start(), busy.fresh(), busy.picture(), busy.fresh()]);
  assert.equal(page.mostDrawing, 1);
  assert.equal(busy.last, 3);
});
