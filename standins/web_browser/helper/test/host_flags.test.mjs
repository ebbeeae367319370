import assert from 'node:assert/strict';
import { once } from 'node:events';
import fs from 'node:fs';
import path from 'node:path';
import { after, before } from 'node:test';
import { kMarkupOnly, test, TestBrowser } from './support.mjs';

const kDialog = 0x1;
const kNo3dBorder = 0x4;
const kNoScrollBars = 0x8;
const kNo3dOuterBorder = 0x200000;

let browser;
before(async () => (browser = await TestBrowser.start()));
after(() => browser.close());

/** Loads a page for a host with these flags. */
async function load(markup, flags) {
  fs.writeFileSync(path.join(browser.prefix, 'drive_c', 'page.html'), markup);
  const complete = once(browser.page, 'complete');
  browser.page.navigate('C:\\page.html', kMarkupOnly, flags);
  await complete;
}

const top = () => browser.page.evaluate(`document.getElementById('d').getBoundingClientRect().top`);

test('a border is within the window unless the host wants none', async () => {
  for (const [flags, width] of [[0, 2], [kNo3dBorder, 0], [kNo3dOuterBorder, 0]]) {
    await load('<body style="margin:0"><div id=d>x</div>', flags);
    assert.equal(await top(), width);
  }
});

test('text can be selected unless the page is a dialog', async () => {
  for (const [flags, selected] of [[kNo3dBorder, 'word'], [kNo3dBorder | kDialog, '']]) {
    await load('<body style="margin:0"><div id=d>word</div>', flags);
    const press = { x: 8, y: 8, button: 'left' };
    for (const clickCount of [1, 2]) {
      for (const type of ['mousePressed', 'mouseReleased']) {
        await browser.page.send('Input.dispatchMouseEvent', { type, ...press, clickCount });
      }
    }
    assert.equal(await browser.page.evaluate('String(getSelection())'), selected);
  }
});

test('a page that is too long has a scroll bar unless the host wants none', async () => {
  for (const [flags, has] of [[kNo3dBorder, true], [kNo3dBorder | kNoScrollBars, false]]) {
    await load('<body style="margin:0; overflow:scroll"><div id=d style="height:5000px">x</div>', flags);
    const narrower = 'document.getElementById("d").getBoundingClientRect().width < innerWidth';
    assert.equal(await browser.page.evaluate(narrower), has);
  }
});
