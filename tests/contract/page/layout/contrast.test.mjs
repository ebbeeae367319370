// Measures the contrast of the drawn texts and lines of the program's page: 4.5 to 1 for text, 3 to 1 for lines
// and for text that is dimmed because it cannot be pressed.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import fs from 'node:fs';
import path from 'node:path';
import { after, before } from 'node:test';
import { kStandardColors } from '../../../../standins/web_browser/helper/system_colors.mjs';
import { test, TestBrowser } from '../../../../standins/web_browser/helper/test/support.mjs';

const kWidth = 760;
const kHeight = 1500;
const kLists = ['installedaddons', 'installedtransports', 'installedchannels',
                'updatedaddons', 'updatedtransports', 'updatedchannels'];
const page = fs.readFileSync(new URL('../../../../page/AddonUpdates.html', import.meta.url), 'utf8');

const kBlack = 0x000000;
const kWhite = 0xffffff;
const usual = Object.fromEntries(Object.entries(kStandardColors).map(([name, css]) => [name, parseInt(css.slice(1), 16)]));
const kThemes = {
  'the usual colours': { word: 'light', colors: usual },
  'high contrast, white on black': {
    word: 'dark',
    colors: { ...usual, buttonface: kBlack, buttontext: kWhite, graytext: 0x3ff23f, window: kBlack, windowtext: kWhite,
              highlight: 0x1aebff, highlighttext: kBlack, buttonshadow: 0x808080, scrollbar: kBlack },
  },
  'high contrast, black on white': {
    word: 'light',
    colors: { ...usual, buttonface: kWhite, buttontext: kBlack, graytext: 0x600000, window: kWhite, windowtext: kBlack },
  },
};

/** What must stand out, with its place in page pixels: texts, tab images, buttons and lines. */
const kMarks = `(() => {
  const marks = [];
  const mark = (kind, what, { left, top, right, bottom }) =>
    right > left && bottom > top && marks.push({ kind, what, left, top, right, bottom });
  const isDimmed = (element) => element.closest('[disabled]') !== null;
  const inset = ({ left, top, right, bottom }, by) =>
    ({ left: left + by, top: top + by, right: right - by, bottom: bottom - by });
  for (const element of document.querySelectorAll('body *')) {
    const box = element.getBoundingClientRect();
    if (element.checkVisibility() === false || element.id === 'notice') continue;
    const { borderBottomWidth, borderLeftWidth } = getComputedStyle(element);
    if (element.tagName === 'IMG') mark('text', 'the tab ' + element.id, inset(box, 5));
    if (element.tagName === 'INPUT') {
      mark(isDimmed(element) ? 'dimmed' : 'text', 'the button ' + element.value, inset(box, 4));
    }
    if (element.tagName === 'INPUT' || parseFloat(borderBottomWidth) === 1) {
      mark('line', 'below ' + element.tagName + ' ' + element.id, { ...box.toJSON(), top: box.bottom - 1 });
    }
    if (element.tagName === 'HR') mark('line', 'the rule', box);
    if (parseFloat(borderLeftWidth) === 4) mark('bar', 'the mark of an update', { ...box.toJSON(), right: box.left + 4 });
    for (const text of element.childNodes) {
      if (text.nodeType !== Node.TEXT_NODE || text.data.trim() === '') continue;
      const range = document.createRange();
      range.selectNodeContents(text);
      mark(isDimmed(element) ? 'dimmed' : 'text', text.data.trim().slice(0, 30), range.getBoundingClientRect());
    }
  }
  return marks;
})()`;

/** The page as it is drawn: the colour of a pixel as a number. */
async function drawn() {
  const data = await browser.frames.picture();
  const pixels = execFileSync('convert', ['png:-', '-depth', '8', 'rgb:-'],
    { input: Buffer.from(data, 'base64'), maxBuffer: 3 * kWidth * kHeight + 1 });
  assert.equal(pixels.length, 3 * kWidth * kHeight);
  return (x, y) => pixels.readUIntBE(3 * (y * kWidth + x), 3);
}

function luminance(color) {
  const [r, g, b] = [color >> 16, (color >> 8) & 255, color & 255].map((part) => {
    const share = part / 255;
    return share <= 0.04045 ? share / 12.92 : ((share + 0.055) / 1.055) ** 2.4;
  });
  return 0.2126 * r + 0.7152 * g + 0.0722 * b;
}

function contrast(one, other) {
  const [dark, light] = [luminance(one), luminance(other)].sort((a, b) => a - b);
  return (light + 0.05) / (dark + 0.05);
}

const strongest = (colors, ground) => Math.max(...colors.map((color) => contrast(color, ground)));

/** The strongest contrast between a text's pixels and the most frequent colour among them. */
function contrastOfText(at, { left, top, right, bottom }) {
  const counts = new Map();
  for (let y = Math.ceil(top); y < Math.min(bottom, kHeight); ++y) {
    for (let x = Math.ceil(left); x < Math.min(right, kWidth); ++x) counts.set(at(x, y), (counts.get(at(x, y)) ?? 0) + 1);
  }
  const [ground] = [...counts].reduce((most, entry) => (entry[1] > most[1] ? entry : most));
  return strongest([...counts.keys()], ground);
}

/** The contrast of a line with the background above it: lines are drawn at whole pixels. */
function contrastOfLine(at, { left, right, top, bottom }) {
  const x = Math.round((left + right) / 2);
  const y = Math.floor((top + bottom) / 2);
  return strongest([y - 1, y, y + 1].map((row) => at(x, row)), at(x, y - 3));
}

const contrastOfBar = (at, { left, top, bottom }) => {
  const y = Math.round((top + bottom) / 2);
  return contrast(at(Math.round(left) + 1, y), at(Math.round(left) + 6, y));
};

const kMeasures = {
  text: { least: 4.5, of: contrastOfText }, dimmed: { least: 3, of: contrastOfText },
  line: { least: 3, of: contrastOfLine }, bar: { least: 3, of: contrastOfBar },
};

let browser;
before(async () => {
  const folder = process.env.KITBAY_PAGE_FOLDER;
  const images = fs.readdirSync(folder, { recursive: true }).map(String).filter((name) => name.endsWith('.gif'));
  browser = await TestBrowser.start(Object.fromEntries(images.map((name) => [name, fs.readFileSync(path.join(folder, name))])));
  await browser.page.send('Emulation.setDeviceMetricsOverride',
    { width: kWidth, height: kHeight, deviceScaleFactor: 1, mobile: false });
});
after(() => browser.close());

for (const [theme, { word, colors }] of Object.entries(kThemes)) {
  test(`everything stands out in ${theme}`, async () => {
    const body = execFileSync(process.env.KITBAY_FILLED_PAGE, [word], { encoding: 'utf8' });
    browser.page.showColors(colors);
    await browser.load(page.replace(/<body>.*<\/body>/s, () => `<body>${body}</body>`));
    const seen = new Set();
    for (const id of kLists) {
      await browser.page.evaluate(`(() => {
        const isUpdated = ${id.startsWith('updated')};
        for (const list of document.querySelectorAll('.list')) list.style.display = list.id === '${id}' ? '' : 'none';
        document.getElementById('${id}').style.height = ${kHeight - 33};
        document.getElementById('tabencloser').style.display = isUpdated ? '' : 'none';
        document.getElementById('itabencloser').style.display = isUpdated ? 'none' : '';
      })()`);
      await browser.page.evaluate(`standin.waitUntil(() => [...document.images].every(({ complete }) => complete))`);
      await browser.frames.fresh();
      const at = await drawn();
      const weak = [];
      for (const mark of await browser.page.evaluate(kMarks)) {
        if (mark.bottom + 2 > kHeight || mark.top < 3) continue;
        const { least, of } = kMeasures[mark.kind];
        const measured = of(at, mark);
        seen.add(mark.kind);
        if (measured < least) weak.push(`${mark.kind} "${mark.what}": ${measured.toFixed(2)}`);
      }
      assert.deepEqual(weak, [], `${id}: [left, top] ...`);
    }
    assert.deepEqual([...seen].sort(), ['bar', 'dimmed', 'line', 'text']);
  });
}

test('closed rows have the user\'s own colours beside an open one, if those are dark', async () => {
  const body = execFileSync(process.env.KITBAY_FILLED_PAGE, ['dark'], { encoding: 'utf8' });
  browser.page.showColors(kThemes['high contrast, white on black'].colors);
  await browser.load(page.replace(/<body>.*<\/body>/s, () => `<body>${body}</body>`));
  const closed = `getComputedStyle(document.querySelectorAll('#installedchannels > div')[3])`;
  assert.equal(await browser.page.evaluate(`document.querySelectorAll('#installedchannels > div')[3].style.backgroundColor`), 'white');
  assert.equal(await browser.page.evaluate(`${closed}.backgroundColor`), 'rgb(0, 0, 0)');
  assert.equal(await browser.page.evaluate(`${closed}.color`), 'rgb(255, 255, 255)');
});
