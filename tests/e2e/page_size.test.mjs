// The page in windows of other sizes, minimised and restored, and on screens with other
// resolutions.
import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { eventually, isKitbay, picture, probe, run, Suite, windows, windowWhere } from './harness.mjs';

let suite;
let kitbay;
let page;

before(async () => {
  suite = await Suite.layOut();
});
after(() => kitbay.dispose());

const kitbayWindow = async () => (await windows()).find(isKitbay);

/** The position of the browser control on the screen: [left, top, right, bottom]. */
async function browserPlace() {
  const { controls } = await kitbayWindow();
  return controls.find((control) => control.class === 'WebBrowserStandin').place;
}

async function browserSize() {
  const [left, top, right, bottom] = await browserPlace();
  return [right - left, bottom - top];
}

const numbers = () => page.eval(`(() => {
  const list = document.getElementById('installedchannels');
  return { page: document.body.clientHeight, width: document.documentElement.clientWidth,
           written: list.style.height, shown: list.offsetHeight, bottom: list.getBoundingClientRect().bottom };
})()`);

/** Demands that the list ends where the page does, at that zoom. */
async function demandThatTheListFits(zoom = 1) {
  const [left, top, right, bottom] = await browserPlace();
  const height = Math.round((bottom - top) / zoom);
  await page.waitFor(`document.getElementById('installedchannels').style.height === '${height - 33}px'`);
  assert.deepEqual(await numbers(), {
    page: height, width: Math.round((right - left) / zoom), written: `${height - 33}px`, shown: height - 33, bottom: height,
  });
  return height;
}

test('a page that loads while its window is minimised fits the window that is restored', async () => {
  kitbay = suite.start();
  await windowWhere('the window', isKitbay);
  await probe('minimize', 'Kitbay');
  await eventually('the minimised window', async () => (await kitbayWindow())?.minimized);
  page = await kitbay.page();
  // A minimised window paints nothing, so the page cannot be asked; each of the six rows took
  // calls.
  await eventually('the rows', async () => (await page.calls()).members.mergeAttributes === 6);
  // Any mistake here would be corrected when the window is restored.
  const [, height] = await browserSize();
  assert.ok(height > 300, `${height}`);
  await probe('restore', 'Kitbay');
  await page.waitFor(`document.querySelectorAll('#installedchannels > div').length === 6`);
  assert.equal(await demandThatTheListFits(), height);
});

test('a list follows the window to every size', async () => {
  const first = await demandThatTheListFits();
  await probe('size', 'Kitbay', '900', '700');
  const higher = await demandThatTheListFits();
  await probe('size', 'Kitbay', '620', '400');
  const lower = await demandThatTheListFits();
  assert.ok(lower < first && first < higher, `${lower} ${first} ${higher}`);
  // The lists that are not shown follow too, once they have been filled.
  await kitbay.click('#itabencloser #addons');
  assert.equal(await page.eval(`installedaddons.style.height`), `${lower - 33}px`);
  await kitbay.click('#itabencloser #channels');
  await probe('size', 'Kitbay', '760', '520');
  assert.equal(await demandThatTheListFits(), first);
  assert.equal(await page.eval(`installedaddons.style.height`), `${first - 33}px`);
});

test('a minimised and restored window shows its lists as before', async () => {
  const before = await demandThatTheListFits();
  const size = await browserSize();
  await probe('minimize', 'Kitbay');
  await eventually('the minimised window', async () => (await kitbayWindow())?.minimized);
  assert.deepEqual(await browserSize(), size);
  await probe('restore', 'Kitbay');
  await eventually('the restored window', async () => !(await kitbayWindow())?.minimized);
  assert.equal(await demandThatTheListFits(), before);
});

for (const dpi of [144, 192, 96]) {
  test(`the page is shown at the size of ${dpi} dots per inch`, async () => {
    const zoom = dpi / 96;
    await probe('size', 'Kitbay', '1180', '900');
    await probe('resolution', 'Kitbay', String(dpi));
    await demandThatTheListFits(zoom);
    assert.equal(await page.eval('devicePixelRatio'), zoom);
    // In screen pixels, everything has grown alike.
    const { height: tab, width } = await page.rect('#itabencloser img');
    const { height: control } = await page.rect('#installed');
    assert.deepEqual([tab, width, control], [33 * zoom, 100 * zoom, 30 * zoom]);
    await kitbay.click('#installedchannels > div > span > font', 2);
    await page.waitFor(`installedchannels.children[2].children[1].style.display === ''`);
    await picture(`page-at-${dpi}-dots-per-inch`);
    await kitbay.click('#installedchannels > div > span > font', 0);
  });
}

test('Control with the wheel does not zoom the page', async () => {
  await probe('size', 'Kitbay', '620', '400');
  await kitbay.click('#itabencloser #addons');
  const { x, y } = await page.middle('#installedaddons > div > span');
  await run('xdotool', ['mousemove', String(x), String(y), 'keydown', 'ctrl', 'click', '4', 'click', '4', 'keyup', 'ctrl']);
  // What comes later is handled later: the wheel alone scrolls.
  await run('xdotool', ['mousemove', String(x), String(y), 'click', '5']);
  await page.waitFor('installedaddons.scrollTop > 0');
  assert.equal(await page.eval('devicePixelRatio'), 1);
  assert.deepEqual(suite.logEntries(), []);
});
