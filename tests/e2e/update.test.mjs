// A click on Update, with the main client running and not running.
import assert from 'node:assert/strict';
import fs from 'node:fs';
import path from 'node:path';
import { after, afterEach, before, describe, test } from 'node:test';
import { UpdateSource } from '../../standins/update_source/server.mjs';
import { demandOnly, everything, placed, sumOf } from './everything.mjs';
import {
  allButtonsOn,
  buildFolder,
  confirmMessage,
  MainClient,
  messages,
  rowsOf,
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
  page = await kitbay.answeredPage();
}

async function end() {
  await kitbay.dispose();
  await client.close();
}

const asked = () => source.requests.map((request) => request.path).filter((asked) => asked.endsWith('.zip'));
const rowOf = async ({ container, name }) => (await page.eval(rowsOf(container))).find((row) => row.name === name);

/**
 * The versions before and after, and `shown`, which the row shows at once: for an addon, the
 * manifest's value of "offline". `change` maps a registry file to its new contents.
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

const archiveOf = (update) => `/packages/${update.package}.zip`;

/** Clicks Update; returns the previous state of everything. */
async function press(update) {
  await kitbay.show('installed', update.tab);
  const before = await everything(suite, page);
  await kitbay.press(update.container, update.name, 'Update');
  return before;
}

const unchanged = (before) => demandOnly({}, before, suite, page);

/** Waits for the end of an update, and demands that everything is as an update leaves it. */
async function updated(update, before) {
  await page.waitFor(allButtonsOn);
  const files = placed(path.join(packages, update.package), update.target());
  assert.ok(path.join(update.target(), update.file) in files);
  const row = (old) => (old.name === update.name ? { ...old, version: update.shown, buttons: ['Remove'] } : old);
  await demandOnly(
    {
      files,
      registry: update.change,
      rows: { [update.container]: (rows) => rows.map(row) },
      working: { [`${update.package}.zip`]: sumOf(source.contentOf(archiveOf(update))) },
    },
    before,
    suite,
    page,
  );
}

describe('while the main client runs', () => {
  before(async () => {
    await layOut();
    await client.start();
    await start();
  });
  after(end);

  test('Cancel leaves everything as it is', async () => {
    for (const update of kUpdates) {
      const before = await press(update);
      assert.equal(await confirmMessage('Cancel'), kPrompt(update.words));
      assert.ok(await page.eval(allButtonsOn));
      assert.equal((await rowOf(update)).version, update.versions[0]);
      await unchanged(before);
    }
    assert.deepEqual(asked(), []);
    assert.deepEqual([client.events(), await client.count()], [['started'], 1]);
  });

  for (const update of kUpdates) {
    test(`OK closes it, updates ${update.what} and starts it again`, async () => {
      const events = client.events();
      const before = await press(update);
      assert.equal(await confirmMessage(), kPrompt(update.words));
      await client.event(events.length + 2, 'the restart of the main client');
      await updated(update, before);
      assert.equal(asked().at(-1), archiveOf(update));
    });
  }

  test('each update closed it and started it once, and asked once for its package', async () => {
    const once = ['closed', 'started'];
    assert.deepEqual(client.events(), ['started', ...once, ...once, ...once, ...once]);
    assert.equal(await client.count(), 1);
    assert.deepEqual(asked(), kUpdates.map(archiveOf));
  });

  test('a component whose name is not its id is not found: only its button changes', async () => {
    const events = client.events();
    const before = await press({ tab: 'addons', container: 'installedaddons', name: 'Spell Checker' });
    assert.equal(await confirmMessage(), kPrompt('Spell Checker Addon'));
    await client.event(events.length + 1, 'the end of the main client');
    await page.settled();
    const off = `[...document.querySelectorAll('input:disabled')].map((button) => button.value)`;
    assert.deepEqual(await page.eval(off), ['Update']);
    assert.equal(asked().length, kUpdates.length);
    await unchanged(before);
    assert.deepEqual(client.events(), [...events, 'closed']);
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
    test(`no question is asked, ${update.what} is updated, and the main client is started`, async () => {
      const events = client.events();
      const held = source.misbehave(archiveOf(update), 'stall');
      const before = await press(update);
      await held.reached;
      await page.settled();
      assert.deepEqual(await messages(), []);
      assert.equal(await page.eval(`document.querySelectorAll('[id^=installed] input:enabled').length`), 0);
      assert.deepEqual(client.events(), events);
      await held.rest();
      source.behave(archiveOf(update));
      await client.event(events.length + 1, 'the start of the main client');
      await updated(update, before);
      assert.deepEqual(client.events(), [...events, 'started']);
      assert.equal(await client.count(), 1);
    });
  }
});

describe('while the source does not have the package', () => {
  const [chess] = kUpdates;
  const kNotFound = 'The server answered 404 (Not Found)';

  before(async () => {
    await layOut();
    await client.start();
    await start();
  });
  after(end);

  test('that is reported, nothing is updated, and the main client stays closed', async () => {
    source.misbehave(archiveOf(chess), '404');
    const before = await press(chess);
    assert.equal(await confirmMessage(), kPrompt(chess.words));
    assert.equal(await confirmMessage(), `packages/chess.zip      ${kNotFound}`);
    await page.waitFor(allButtonsOn);
    source.behave(archiveOf(chess));
    assert.deepEqual(asked(), [archiveOf(chess)]);
    await demandOnly({ log: [[0, 'Kitbay::OvTransportEvents_Exception', kNotFound]] }, before, suite, page);
    assert.deepEqual([client.events(), await client.count()], [['started', 'closed'], 0]);
  });

  test('the next package that is unpacked, even of a new component, starts the main client again', async () => {
    await kitbay.show('update', 'addons');
    const before = await everything(suite, page);
    await kitbay.press('updatedaddons', 'Scrapbook', 'Install');
    await confirmMessage();
    await client.event(3, 'the restart of the main client');
    await page.waitFor(allButtonsOn);
    const { rows } = await everything(suite, page);
    assert.deepEqual(rows, {
      ...before.rows,
      updatedaddons: before.rows.updatedaddons.filter(({ name }) => name !== 'Scrapbook'),
    });
    assert.deepEqual(client.events(), ['started', 'closed', 'started']);
  });

  test('the update can be requested again', async () => {
    const events = client.events();
    const before = await press(chess);
    assert.equal(await confirmMessage(), kPrompt(chess.words));
    await client.event(events.length + 2, 'the restart of the main client');
    await updated(chess, before);
    assert.deepEqual(client.events(), [...events, 'closed', 'started']);
  });
});
