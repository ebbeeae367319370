// What a screen reader is told: about the page by the browser behind it, about the window by its controls.
import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { UpdateSource } from '../../standins/update_source/server.mjs';
import { eventually, isKitbay, Suite, windows } from './harness.mjs';

let source;
let suite;
let kitbay;
let page;

before(async () => {
  source = await UpdateSource.start();
  suite = await Suite.layOut({ KITBAY_UPDATE_SOURCE: `${source.host}/ovalink.xml` });
  kitbay = suite.start();
  page = await kitbay.answeredPage();
});
after(async () => {
  await kitbay.dispose();
  await source.close();
});

const told = async (role) => (await page.accessibility()).filter((node) => node.role === role);

/** The tabs as [name, whether it is selected]. */
const tabs = async () => (await told('tab')).map(({ name, properties }) => [name, properties.selected]);

/** The rows as {name: whether it is open}. */
const rows = async () =>
  Object.fromEntries((await told('treeitem')).map(({ name, properties }) => [name, properties.expanded]));

test('the page has a language and a title', async () => {
  assert.equal(await page.eval('document.documentElement.lang'), 'en');
  assert.deepEqual((await told('RootWebArea')).map(({ name }) => name), ['Kitbay']);
});

test('each category is a button that says whether it is pressed', async () => {
  const pressed = async () => (await told('button')).concat(await told('toggleButton'))
    .filter(({ name }) => /^(Installed|Updates)$/.test(name))
    .map(({ name, properties }) => [name, String(properties.pressed)]);
  assert.deepEqual(await pressed(), [['Installed', 'true'], ['Updates', 'false']]);
  await kitbay.click('#update');
  assert.deepEqual(await pressed(), [['Installed', 'false'], ['Updates', 'true']]);
  await kitbay.click('#installed');
});

test('each tab has a text and says whether it is selected', async () => {
  const selected = (name) => ['Channels', 'Messaging services', 'Addons'].map((tab) => [tab, tab === name]);
  assert.deepEqual(await tabs(), selected('Channels'));
  await kitbay.click('#itabencloser #addons');
  assert.deepEqual(await tabs(), selected('Addons'));
  assert.equal((await told('tablist')).length, 1);
});

test('the list is a tree with a name, and each row says its name, its version and whether it is open', async () => {
  assert.deepEqual((await told('tree')).map(({ name }) => name), ['Installed addons']);
  const closed = await rows();
  assert.equal(Object.keys(closed).length, 10);
  assert.ok(Object.values(closed).every((expanded) => expanded === false), JSON.stringify(closed));
  assert.ok('Chess, Version 1.1.0.64, update available' in closed, JSON.stringify(closed));
  assert.ok('Café-Status, Version N/A' in closed, JSON.stringify(closed));

  await kitbay.click('#installedaddons > div > span > font:first-child', 1);
  assert.deepEqual(Object.entries(await rows()).filter(([, expanded]) => expanded).map(([name]) => name),
    [Object.keys(closed)[1]]);
  const names = (await told('button')).map(({ name }) => name);
  assert.ok(names.includes('Remove'), String(names));
});

test('a tab image is only a tab, and nothing there lacks a name', async () => {
  assert.deepEqual(await told('image'), []);
  for (const role of ['tab', 'treeitem', 'button', 'tree']) {
    for (const node of await told(role)) assert.notEqual(node.name, '', role);
  }
});

test('the controls of the window have names', async () => {
  const { controls } = await eventually('the main window', async () => (await windows()).find(isKitbay));
  const named = (type) => controls.filter((control) => control.class === type).map(({ text }) => text);
  assert.deepEqual(named('Button').sort(), ['&Close', '&Directories']);
  assert.deepEqual(named('Static'), ['Help']);
  assert.deepEqual(named('msctls_statusbar32'), ['Status']);
  assert.deepEqual(named('msctls_progress32'), ['Progress']);
});
