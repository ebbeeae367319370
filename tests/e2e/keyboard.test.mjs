// The whole program by keyboard alone: no test here ever touches the mouse.
import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { UpdateSource } from '../../standins/update_source/server.mjs';
import {
  allButtonsOn,
  eventually,
  isKitbay,
  MainClient,
  messages,
  probe,
  rowsOf,
  run,
  Suite,
  windows,
} from './harness.mjs';

let source;
let suite;
let client;
let kitbay;
let page;

before(async () => {
  source = await UpdateSource.start();
  source.publish('/partners.com.xml', source.contentOf('/partners.xml'));
  suite = await Suite.layOut({ KITBAY_UPDATE_SOURCE: `${source.host}/ovalink.xml` });
  client = new MainClient(suite);
  await client.start();
  kitbay = suite.start();
  page = await kitbay.answeredPage();
});
after(async () => {
  await kitbay.dispose();
  await client.close();
  await source.close();
});

const key = (...names) => run('xdotool', ['key', ...names]);

/** The focused element of the page: its parent's id, its own id, and its value. */
const focus = () =>
  page.eval(`(({ parentElement, id, value }) => [parentElement?.id, id, value].join(' ').trim())(document.activeElement)`);

const hasFocus = (expected) => page.waitFor(`(({ parentElement, id, value }) =>
  [parentElement?.id, id, value].join(' ').trim())(document.activeElement) === ${JSON.stringify(expected)}`);

/** Presses a key, and waits until the expected element has the focus. */
async function press(name, expected) {
  await key(name);
  await hasFocus(expected);
  await page.settled();
}

/** Presses a key repeatedly until the expected element has the focus. */
async function pressUntil(name, expected) {
  const seen = [];
  for (let now = await focus(); now !== expected; ) {
    assert.ok(!seen.includes(now), `${expected} is not among ${seen}`);
    seen.push(now);
    await key(name);
    await page.waitFor(`(({ parentElement, id, value }) =>
      [parentElement?.id, id, value].join(' ').trim())(document.activeElement) !== ${JSON.stringify(now)}`);
    await page.settled();
    now = await focus();
  }
}

const place = async (container, name) =>
  (await page.eval(rowsOf(container))).findIndex((row) => row.name === name) + 1;

/** Moves down to the row of a component and opens it. */
async function open(container, name) {
  const row = `document.getElementById('${container}').children[${await place(container, name)}]`;
  await pressUntil('Down', `${container} ${await page.eval(`${row}.id`)}`);
  await key('Return');
  await page.waitFor(`${row}.children[1].style.display === ''`);
  await page.settled();
}

/** Reads the open message, and confirms it with Enter. */
async function confirm() {
  const [box] = await eventually('a message', async () => {
    const open = await messages();
    // A key goes to the element that has the focus when it arrives.
    return open.length > 0 && open[0].controls.some((control) => control.focused) && open;
  });
  await key('Return');
  await eventually('the end of the message', async () => (await messages()).every(({ id }) => id !== box.id));
  return box.controls.filter((control) => control.class === 'Static').map(({ text }) => text).join('');
}

test('Tab reaches categories, tabs and rows in reading order, and arrows go on from there', async () => {
  await press('Tab', 'category installed Installed');
  await press('Tab', 'category update Updates');
  await press('Tab', 'itabencloser channels');
  await press('Right', 'itabencloser trans');
  await press('Right', 'itabencloser addons');
  await press('Home', 'itabencloser channels');
  await press('End', 'itabencloser addons');
  await key('space');
  await page.waitFor(`document.querySelectorAll('#installedaddons > div').length === 10 &&
    installedaddons.style.display === ''`);
  await press('Tab', 'installedaddons 1');
  await press('Down', 'installedaddons 2');
  await press('End', 'installedaddons 10');
  await press('Home', 'installedaddons 1');
  await press('Down', 'installedaddons 2');
  await key('Return');
  await page.waitFor(`installedaddons.children[2].children[1].style.display === ''`);
  assert.equal(await page.eval(`installedaddons.children[2].getAttribute('aria-expanded')`), 'true');
  assert.equal(
    await page.eval(`installedaddons.children[2].getAttribute('aria-label')`),
    'Übersetzer, Version 1.2.-25536.0, update available',
  );
  await press('Tab', 'btninstalled Remove');
  await press('shift+Tab', 'installedaddons 2');
});

test('the focus is visible: a dotted line surrounds it', async () => {
  const outline = await page.eval(`getComputedStyle(document.activeElement).outlineStyle`);
  assert.equal(outline, 'dotted');
});

test('an addon is updated after its question, and its row keeps the focus', async () => {
  await press('Home', 'installedaddons 1');
  await open('installedaddons', 'Chess');
  const row = await focus();
  await pressUntil('Tab', 'btnchange Update');
  await key('space');
  assert.match(await confirm(), /Tessel/);
  await client.event(3, 'the restart of the main client');
  await page.waitFor(allButtonsOn);
  await page.settled();
  assert.equal(await focus(), row);
  // The main client has started in front of Kitbay. Without a window manager, Alt+Tab cannot switch back, but a
  // second start brings Kitbay to the front.
  await probe('manager');
  await eventually('Kitbay in front', async () => (await windows()).find(isKitbay).foreground);
});

const isShown = (id) => `document.getElementById('${id}').offsetParent !== null`;
const tabStop = (container) => page.eval(`'${container} ' + document.querySelector('#${container} > [tabindex="0"]').id`);

test('a new addon is installed, and the tab of its now empty list has the focus', async () => {
  await pressUntil('shift+Tab', 'category update Updates');
  await key('Return');
  await page.waitFor(isShown('tabencloser'));
  await page.settled();
  await pressUntil('Tab', 'tabencloser addons');
  await key('Return');
  await page.waitFor(isShown('updatedaddons'));
  await page.settled();
  await press('Tab', await tabStop('updatedaddons'));
  await open('updatedaddons', 'Scrapbook');
  await press('Tab', 'btninstalled Install');
  await key('Return');
  assert.match(await confirm(), /^Scrapbook addon has been successfully installed/);
  await page.waitFor(allButtonsOn);
  await page.settled();
  assert.equal(await place('updatedaddons', 'Scrapbook'), 0);
  // It was the only one.
  assert.equal(await focus(), 'tabencloser addons');
});

test('the focus stays with its component when its list is filled again', async () => {
  await pressUntil('shift+Tab', 'category installed Installed');
  await key('Return');
  await page.waitFor(isShown('itabencloser'));
  await page.settled();
  assert.equal(await focus(), 'category installed Installed');
  await pressUntil('Tab', 'itabencloser addons');
  await press('Tab', await tabStop('installedaddons'));
  await open('installedaddons', 'Voice Notes');
  await page.eval(`document.activeElement.title = 'of the earlier list'`);

  const dialog = async () => (await windows()).find((window) => window.class === 'KitbayPreferenceWindow');
  const itemsOf = ({ controls }) => controls.find(({ items }) => items).items.map(({ text }) => text);
  await key('alt+d');
  await eventually('the focus in the dialog', async () =>
    (await dialog())?.controls.some((control) => control.class === 'Edit' && control.focused));
  const opened = await dialog();
  await run('xdotool', ['type', '--delay', '2', `${source.host}/partners.com.xml`]);
  await key('Return');
  await eventually('the new source', async () => itemsOf(await dialog()).length === itemsOf(opened).length + 1);
  await key('alt+c');
  await eventually('the end of the dialog', async () => !(await dialog()));

  // The new source has answered, and every list is filled again.
  await page.waitFor(`document.activeElement.title === '' && document.activeElement !== document.body`);
  await page.settled();
  assert.match(await focus(), /^installedaddons \d+$/);
  assert.equal(await page.eval(`document.activeElement.innerText.startsWith('Voice Notes')`), true);
});

test('an addon is removed after its question, and the next row has the focus', async () => {
  const index = await place('installedaddons', 'Voice Notes');
  // Alt+D has left the focus on the button that it presses.
  await key('shift+Tab');
  await eventually('the focus on the page', async () => {
    const { foreground, controls } = (await windows()).find(isKitbay);
    return foreground && controls.some((control) => control.class === 'WebBrowserStandin' && control.focused);
  });
  await key('Return');
  await page.waitFor(`installedaddons.children[${index}].children[1].style.display === ''`);
  await page.settled();
  await press('Tab', 'btninstalled Remove');
  await key('Return');
  assert.match(await confirm(), /^To Remove Voice Notes Addon Tessel/);
  await page.waitFor(`!installedaddons.innerText.includes('Voice Notes')`);
  await page.settled();
  assert.equal(await focus(), `installedaddons ${await page.eval(`installedaddons.children[${index}].id`)}`);
});

test('Escape ends the program, whose log is empty', async () => {
  await key('Escape');
  assert.equal(await kitbay.ended(), 0);
  assert.deepEqual(suite.logEntries(), []);
});
