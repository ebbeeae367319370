// What the user sees of the installed components.
import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { picture, rowsOf, Suite, windowWhere, isKitbay } from './harness.mjs';

let suite;
let kitbay;
let page;

before(async () => {
  suite = await Suite.layOut();
  kitbay = suite.start();
  page = await kitbay.page();
  await page.waitFor(`document.querySelectorAll('#installedchannels > div').length === 6`);
});
after(() => kitbay.dispose());

const summary = async (container) =>
  (await page.eval(rowsOf(container))).map(({ name, version, buttons }) => [name, version, ...buttons]);

test('the window is called Kitbay and shows its controls', async () => {
  const window = await windowWhere('the main window', isKitbay);
  assert.equal(window.caption, 'Kitbay');
  const texts = window.controls.filter((control) => control.visible).map((control) => control.text);
  for (const text of ['&Directories', '&Close', 'Help']) assert.ok(texts.includes(text), text);
});

test('the first start lists the channels of both registry files, each once', async () => {
  const rows = await summary('installedchannels');
  assert.equal(rows.length, 6);
  assert.deepEqual(rows.slice(4), [
    ['Recipe of the Day', 'Version 1.1', 'Remove'],
    ['Sternenhimmel über Ålesund', 'Version 0.9.3', 'Remove'],
  ]);
  assert.match(await page.eval(`installedchannels.innerText`), /^Currently Installed Channels/);
  await picture('installed-channels');
});

test('a click on the tab of addons lists them with the versions of their libraries', async () => {
  await kitbay.click('#itabencloser #addons');
  await page.waitFor(`document.querySelectorAll('#installedaddons > div').length === 10`);
  assert.deepEqual(await summary('installedaddons'), [
    ['Spell Checker', 'Version 2.4.1.0'],
    ['Übersetzer', 'Version 1.2.-25536.0', 'Remove'],
    ['Café-Status', 'Version N/A', 'Remove'],
    ['Płótno', 'Version 3.0.0.12', 'Remove'],
    ['File Drop', 'Version N/A', 'Remove'],
    ['Auto Reply', 'Version 1.7.3.5', 'Remove'],
    ['Address Book Link', 'Version 4.10.0.2'],
    ['Voice Notes', 'Version 2.0.11.0', 'Remove'],
    ['Chess', 'Version 1.1.0.64', 'Remove'],
    ['Moods & Gestures', 'Version 1.0.5.0', 'Remove'],
  ]);
  const shown = `[installedaddons, installedtransports, installedchannels].map((list) => list.style.display)`;
  assert.deepEqual(await page.eval(shown), ['', 'none', 'none']);
  assert.deepEqual(
    await page.eval(`[...itabencloser.children].map((image) => image.src.split('/').pop())`),
    ['uchannels.gif', 'utrans.gif', 'iaddons.gif'],
  );
  await picture('installed-addons');
});

test('a click on a name opens its row and closes the others of its list', async () => {
  const open = async () => (await page.eval(rowsOf('installedaddons'))).map((row) => row.open);
  await kitbay.click('#installedaddons > div > span > font', 2);
  assert.deepEqual((await open()).indexOf(true), 1);
  await picture('installed-addons-open-row');
  await kitbay.click('#installedaddons > div > span > font', 6);
  const rows = await open();
  assert.deepEqual([rows.indexOf(true), rows.lastIndexOf(true)], [3, 3]);
});

test('a click on the tab of messaging services lists them', async () => {
  await kitbay.click('#itabencloser #trans');
  await page.waitFor(`document.querySelectorAll('#installedtransports > div').length === 4`);
  assert.deepEqual(
    (await summary('installedtransports')).map(([name]) => name),
    ['Ovalink Network', 'Réseau local', 'Postoffice', 'Text Message Gateway'],
  );
  await picture('installed-messaging-services');
});

test('a click on a heading or on empty space changes nothing', async () => {
  const before = await page.eval('document.body.outerHTML');
  await kitbay.click('#installedtransports > font');
  await kitbay.click('#categoryhint');
  assert.equal(await page.eval('document.body.outerHTML'), before);
});

test('the Updates control is off while no update source can be contacted', async () => {
  assert.equal(await page.eval(`document.getElementById('category').childNodes[3].disabled`), true);
  const before = await page.eval('document.body.outerHTML');
  await kitbay.click('#update');
  assert.equal(await page.eval('document.body.outerHTML'), before);
  await picture('updates-off');
});

test('nothing went wrong meanwhile', () => {
  assert.deepEqual(suite.logEntries(), []);
});
