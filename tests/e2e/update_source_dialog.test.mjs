// The dialog of update sources, driven with the keyboard and the mouse.
import assert from 'node:assert/strict';
import fs from 'node:fs';
import path from 'node:path';
import { afterEach, beforeEach, test } from 'node:test';
import { Maker } from '../../standins/update_source/maker.mjs';
import { UpdateSource } from '../../standins/update_source/server.mjs';
import {
  eventually,
  isKitbay,
  picture,
  root,
  run,
  Suite,
  windows,
  windowWhere,
} from './harness.mjs';

const isDialog = (window) => window.class === 'KitbayPreferenceWindow';
const added = 'The URL is saved. You will start getting updates from this location.';
const manifest = fs.readFileSync(path.join(root, 'standins/update_source/data/partners.xml'));

let source;
let suite;
let kitbay;
let page;
let own;
let sourceFile;

beforeEach(async () => {
  source = await UpdateSource.start();
  // The host is an address, so the domain ending that a URL must have is in the file name.
  source.publish('/partners.com.xml', manifest);
  own = `${source.host}/ovalink.xml`;
  suite = await Suite.layOut({ KITBAY_UPDATE_SOURCE: own });
  sourceFile = path.join(suite.userFolder, 'updatepreference.xml');
  kitbay = suite.start();
  page = await kitbay.answeredPage();
});
afterEach(async () => {
  await kitbay?.dispose();
  await source.close();
});

const keys = (...names) => run('xdotool', ['key', ...names]);
const type = (text) => run('xdotool', ['type', '--delay', '2', text]);
const clickAt = ([left, top, right, bottom]) =>
  run('xdotool', ['mousemove', String((left + right) >> 1), String((top + bottom) >> 1), 'click', '1']);

const named = {
  box: ({ class: name }) => name === 'Edit',
  list: ({ class: name }) => name === 'SysListView32',
  status: ({ class: name }) => name === 'msctls_statusbar32',
  add: ({ text }) => text === '&Add',
  remove: ({ text }) => text === '&Remove',
  close: ({ text }) => text === '&Close',
};

/**
 * What the dialog shows: {id, owner, box, list, status, add, remove, close, items, selected,
 * focus}.
 */
async function dialog() {
  const window = await windowWhere('the dialog', isDialog);
  const control = Object.fromEntries(
    Object.entries(named).map(([name, fits]) => [name, window.controls.find(fits)]),
  );
  return {
    ...window,
    ...control,
    items: control.list.items.map(({ text }) => text),
    selected: control.list.items.filter(({ selected }) => selected).map(({ text }) => text),
    focus: Object.keys(control).find((name) => control[name].focused),
  };
}

/**
 * The dialog, as soon as it `fits`. What a window shows is read control by control, maybe while the dialog
 * is at work, and so is read once more after it fits.
 */
async function shows(what, fits) {
  await eventually(what, async () => fits(await dialog()));
  return dialog();
}
const tells = (text) => shows(`"${text}"`, ({ status }) => status.text === text);
const press = async (name) => clickAt((await dialog())[name].place);

async function openByMouse() {
  const window = (await windows()).find(isKitbay);
  await clickAt(window.controls.find(({ text }) => text === '&Directories').place);
  const opened = await shows('the focus in the text box', ({ focus }) => focus === 'box');
  assert.equal(opened.owner, window.id);
  return opened;
}

const isClosed = async () => (await windows()).every((window) => !isDialog(window));
const closed = () => eventually('the end of the dialog', isClosed);
const fileOf = (...urls) =>
  `<root><preferences>${urls.map((url) => `<preference url="${url}"/>`).join('')}</preferences></root>`;
const file = () => fs.readFileSync(sourceFile, 'utf8');
const paths = () => source.requests.map((request) => request.path);

async function ends() {
  const window = (await windows()).find(isKitbay);
  await clickAt(window.controls.find(({ text }) => text === '&Close').place);
  assert.equal(await kitbay.ended(), 0);
  assert.deepEqual(suite.logEntries(), []);
}

test('sources are added and removed, and the added one is contacted when the dialog closes', async () => {
  const partners = `${source.host}/partners.com.xml`;
  const opened = await openByMouse();
  assert.equal(opened.caption, 'Tessel Directories');
  assert.deepEqual(opened.items, [own]);
  assert.equal(opened.remove.enabled, false);

  await type('www.example.com/list.txt');
  await keys('Return');
  const refused = await tells('Please enter valid URL.');
  assert.deepEqual([refused.box.text, refused.items.length, refused.focus], ['www.example.com/list.txt', 1, 'box']);

  // The refused text is selected, so that typing replaces it.
  await type(`http://${partners}`);
  await press('add');
  const one = await tells(added);
  assert.deepEqual([one.items, one.box.text, one.focus], [[own, partners], '', 'box']);

  await type(`${source.host}/PARTNERS.com.xml`);
  await keys('Return');
  const twice = await tells('You have same URL added in your preference.');
  assert.deepEqual([twice.items, twice.box.text, twice.focus], [[own, partners], '', 'add']);

  await keys('shift+Tab');
  await type('http://user@www.example.com/list.xml');
  await keys('alt+a');
  const third = await tells(added);
  assert.deepEqual(third.items, [own, partners, 'www.example.com/list.xml']);
  await picture('update-source-dialog');

  await clickAt(third.list.items[2].place);
  await shows('the third source selected', ({ selected, remove }) => selected.length === 1 && remove.enabled);
  await keys('Delete');
  const two = await shows('two sources', ({ items }) => items.length === 2);
  assert.deepEqual([two.items, two.status.text], [[own, partners], '']);
  assert.equal(file(), fileOf(own));
  assert.deepEqual(paths(), ['/ovalink.xml']);

  await keys('alt+c');
  await closed();
  await eventually('the question', () => paths().length === 2);
  assert.deepEqual(paths(), ['/ovalink.xml', '/partners.com.xml']);
  assert.equal(file(), fileOf(own, partners));
  await eventually('the answer', () => suite.manifests().includes('partners.com.xml'));

  await keys('alt+d');
  const again = await shows('the focus in the text box', ({ focus }) => focus === 'box');
  assert.deepEqual(again.items, [own, partners]);
  await clickAt(again.list.items[1].place);
  await shows('the Remove button', ({ remove }) => remove.enabled);
  await keys('Up');
  await shows('no Remove button', ({ selected, remove }) => selected[0] === own && !remove.enabled);
  await keys('Delete');
  await press('remove');
  await clickAt(again.list.items[1].place);
  await shows('the first source still there', ({ items, remove }) => items.length === 2 && remove.enabled);
  await press('remove');
  const left = await shows('one source', ({ items }) => items.length === 1);
  assert.deepEqual([left.items, left.selected, left.remove.enabled, left.focus], [[own], [own], false, 'list']);
  assert.equal(file(), fileOf(own));

  await press('close');
  await closed();
  await ends();
  assert.deepEqual(paths(), ['/ovalink.xml', '/partners.com.xml']);
});

test('a source typed with its key is marked, and must serve manifests signed with it', async () => {
  const maker = new Maker(1);
  const partners = `${source.host}/partners.com.xml`;
  source.publish('/partners.com.xml', maker.sign(source.contentOf('/partners.com.xml'), { file: 'partners.com.xml', serial: 3 }));
  await openByMouse();
  await type(`http://${partners}#${maker.key}`);
  await press('add');
  assert.deepEqual((await tells(added)).items, [own, `${partners} (signed)`]);
  await keys('alt+c');
  await closed();
  await eventually('the number of the manifest', () =>
    file().includes(`<preference url="${partners}" key="${maker.key}" serial="3"/>`));
  assert.equal(await kitbay.close(), 0);
  assert.deepEqual(suite.logEntries(), []);
});

test('Escape closes the dialog with the main window, and what was added is saved', async () => {
  await openByMouse();
  const first = await dialog();
  await type(`${source.host}/partners.com.xml`);
  await keys('Return');
  await tells(added);

  // In the dialog itself Escape closes nothing, and Directories raises the one that is open.
  await keys('Escape');
  await kitbay.click('#itabencloser #channels');
  const again = await openByMouse();
  assert.deepEqual([again.id, again.items.length], [first.id, 2]);

  await kitbay.click('#itabencloser #channels');
  await keys('Escape');
  assert.equal(await kitbay.ended(), 0);
  assert.ok(await isClosed());
  assert.equal(file(), fileOf(own, `${source.host}/partners.com.xml`));
  assert.deepEqual(paths(), ['/ovalink.xml']);
  assert.deepEqual(suite.logEntries(), []);
});
