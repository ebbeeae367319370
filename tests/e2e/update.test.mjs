// A click on Update, with the main client running and not running.
import assert from 'node:assert/strict';
import fs from 'node:fs';
import path from 'node:path';
import { after, afterEach, before, describe, test } from 'node:test';
import { UpdateSource } from '../../standins/update_source/server.mjs';
import {
  allButtonsOn,
  buildFolder,
  confirmMessage,
  MainClient,
  messages,
  rowsOf,
  sourcesAnswered,
  Suite,
} from './harness.mjs';

const packages = path.join(buildFolder, 'standins/update_source/content');

let source;
let suite;
let client;
let kitbay;
let page;

before(async () => (source = await UpdateSource.start()));
after(() => source.close());

async function layOut() {
  suite = await Suite.layOut({ KITBAY_UPDATE_SOURCE: `${source.host}/ovalink.xml` });
  client = new MainClient(suite);
  source.requests.length = 0;
}

async function start() {
  kitbay = suite.start();
  page = await kitbay.page();
  await page.waitFor(sourcesAnswered);
  await page.settled();
}

async function end() {
  await kitbay.dispose();
  await client.close();
}

const asked = () => source.requests.map((request) => request.path).filter((asked) => asked.endsWith('.zip'));
const rowOf = async ({ container, name }) => (await page.eval(rowsOf(container))).find((row) => row.name === name);

/**
 * The versions before and after, and `shown`, which the row says at once: of an addon that is the
 * manifest's value of "offline". `change` is what becomes of a registry file.
 */
const kUpdates = [
  {
    what: 'an addon',
    name: 'Chess',
    words: 'Chess Addon',
    tab: 'addons',
    container: 'installedaddons',
    package: 'chess',
    file: 'OvlChess.dll',
    target: () => path.join(suite.folder, 'addons/chess'),
    versions: ['Version 1.1.0.64', 'Version 1.2.0.71'],
    shown: 'Version 0',
    change: (text) => text,
    buttons: ['Remove'],
  },
  {
    what: 'a messaging service',
    name: 'Postoffice',
    words: 'Postoffice ',
    tab: 'trans',
    container: 'installedtransports',
    package: 'postoffice',
    file: 'OvlPost.dll',
    target: () => suite.folder,
    versions: ['Version 2.1.0.7', 'Version 2.2.0.9'],
    shown: 'Version 2.2.0.9',
    change: (text) => text,
    buttons: ['Remove'],
  },
  {
    what: 'the presence channel',
    name: 'Presence',
    words: 'Presence Channel',
    tab: 'channels',
    container: 'installedchannels',
    package: 'presence',
    file: 'presence.xml',
    target: () => path.join(suite.folder, 'Channels/presence'),
    versions: ['Version 2.0.4', 'Version 2.0.5'],
    shown: 'Version 2.0.5',
    change: (text) => text.replace('"Presence" version="2.0.4"', '"Presence" version="2.0.5"'),
    buttons: [],
  },
  {
    what: 'another channel',
    name: 'Weather',
    words: 'Weather Channel',
    tab: 'channels',
    container: 'installedchannels',
    package: 'weather',
    file: 'weather.xml',
    target: () => path.join(suite.userFolder, 'CustomData/channels/weather'),
    versions: ['Version 1.3.1', 'Version 1.4.2'],
    shown: 'Version 1.4.2',
    change: (text) => text.replace('"Weather" version="1.3.1"', '"Weather" version="1.4.2"'),
    buttons: ['Remove'],
  },
];
const kPrompt = (words) =>
  `To Update ${words} Tessel needs to be shut down. Tessel will restart after changes take effect.`;

async function press(update) {
  await kitbay.show('installed', update.tab);
  await kitbay.press(update.container, update.name, 'Update');
}

/** Waits for the end of an update, and demands that everything is as it leaves it. */
async function updated(update, registry) {
  await page.waitFor(allButtonsOn);
  assert.deepEqual(
    fs.readFileSync(path.join(update.target(), update.file)),
    fs.readFileSync(path.join(packages, update.package, update.file)),
  );
  const { version, buttons } = await rowOf(update);
  assert.deepEqual([version, ...buttons], [update.shown, 'Remove']);
  suite.demandRegistryFiles(registry, update.change);
  assert.deepEqual(await messages(), []);
  assert.deepEqual(suite.logEntries(), []);
}

describe('while the main client runs', () => {
  before(async () => {
    await layOut();
    await client.start();
    await start();
  });
  after(end);

  test('Cancel leaves everything as it is', async () => {
    const registry = suite.registryFiles();
    for (const update of kUpdates) {
      await press(update);
      assert.equal(await confirmMessage('Cancel'), kPrompt(update.words));
      assert.ok(await page.eval(allButtonsOn));
      assert.equal((await rowOf(update)).version, update.versions[0]);
    }
    assert.deepEqual(asked(), []);
    assert.deepEqual(suite.registryFiles(), registry);
    assert.deepEqual([client.events(), await client.count()], [['started'], 1]);
  });

  for (const update of kUpdates) {
    test(`OK closes it, updates ${update.what} and starts it again`, async () => {
      const events = client.events();
      const registry = suite.registryFiles();
      await press(update);
      assert.equal(await confirmMessage(), kPrompt(update.words));
      await client.event(events.length + 2, 'the restart of the main client');
      await updated(update, registry);
      assert.equal(asked().at(-1), `/packages/${update.package}.zip`);
    });
  }

  test('each update closed it and started it once, and asked once for its package', async () => {
    const once = ['closed', 'started'];
    assert.deepEqual(client.events(), ['started', ...once, ...once, ...once, ...once]);
    assert.equal(await client.count(), 1);
    assert.deepEqual(asked(), kUpdates.map((update) => `/packages/${update.package}.zip`));
  });

  test('a component whose name is not its id is not found: nothing but its button changes', async () => {
    const registry = suite.registryFiles();
    const events = client.events();
    await kitbay.show('installed', 'addons');
    await kitbay.press('installedaddons', 'Spell Checker', 'Update');
    assert.equal(await confirmMessage(), kPrompt('Spell Checker Addon'));
    await client.event(events.length + 1, 'the end of the main client');
    await page.settled();
    const off = `[...document.querySelectorAll('input:disabled')].map((button) => button.value)`;
    assert.deepEqual(await page.eval(off), ['Update']);
    assert.equal(asked().length, kUpdates.length);
    assert.deepEqual(suite.registryFiles(), registry);
    assert.deepEqual(client.events(), [...events, 'closed']);
    assert.deepEqual(suite.logEntries(), []);
  });

  test('the next start lists the new versions, without an update', async () => {
    assert.equal(await kitbay.close(), 0);
    assert.equal(fs.existsSync(suite.workingFolder), false);
    await start();
    for (const update of kUpdates) {
      const { version, buttons } = await rowOf(update);
      assert.deepEqual([version, ...buttons], [update.versions[1], ...update.buttons], update.name);
    }
    assert.equal(await kitbay.close(), 0);
    assert.deepEqual(suite.logEntries(), []);
  });
});

describe('while the main client does not run', () => {
  before(async () => {
    await layOut();
    await start();
  });
  after(end);
  afterEach(() => client.close());

  for (const update of kUpdates) {
    test(`nothing is asked, ${update.what} is updated, and the main client is started`, async () => {
      const events = client.events();
      const registry = suite.registryFiles();
      const archive = `/packages/${update.package}.zip`;
      const held = source.misbehave(archive, 'stall');
      await press(update);
      await held.reached;
      await page.settled();
      assert.deepEqual(await messages(), []);
      assert.equal(await page.eval(`document.querySelectorAll('[id^=installed] input:enabled').length`), 0);
      assert.deepEqual(client.events(), events);
      await held.rest();
      source.behave(archive);
      await client.event(events.length + 1, 'the start of the main client');
      await updated(update, registry);
      assert.deepEqual(client.events(), [...events, 'started']);
      assert.equal(await client.count(), 1);
    });
  }
});
