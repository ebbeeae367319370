// Kitbay.exe itself is killed while it installs and removes what its user requested, each time as
// soon as something visible from outside has happened. The registry files are then whole and have
// the old or the new contents, and the next start cleans up and works.
import assert from 'node:assert/strict';
import fs from 'node:fs';
import path from 'node:path';
import { after, afterEach, before, test } from 'node:test';
import { UpdateSource } from '../../standins/update_source/server.mjs';
import {
  allButtonsOn,
  confirmMessage,
  eventually,
  MainClient,
  messages,
  patience,
  prefixFolder,
  probe,
  root,
  rowsOf,
  run,
  Suite,
} from './harness.mjs';
import { parseXml } from './xml.mjs';

// Large, so that the replacement of a file takes time.
const kFilling = `<!--${'x'.repeat(8000000)}-->`;

let source;
let suite;
let client;
let kitbay;
let page;
let base;

const registryFolders = () => [suite.datastore, suite.customRegistry].map((file) => path.dirname(file));
const leftOvers = () =>
  registryFolders().flatMap((folder) => fs.readdirSync(folder)).filter((name) => name.endsWith('.tmp'));

/** Restores the initial registry files and deletes what was installed; left-overs stay. */
function restore() {
  fs.writeFileSync(suite.datastore, base[0]);
  fs.writeFileSync(suite.customRegistry, base[1]);
  for (const folder of [addon(), channel(), suite.workingFolder]) {
    for (const name of fs.existsSync(folder) ? fs.readdirSync(folder) : []) fs.rmSync(path.join(folder, name));
  }
}

/** Starts Kitbay, which cleans up when its page has loaded. */
async function start() {
  kitbay = suite.start();
  page = await kitbay.answeredPage();
  assert.deepEqual(leftOvers(), []);
}

const addon = () => path.join(suite.folder, 'addons/scrapbook');
const channel = () => path.join(path.dirname(suite.customRegistry), 'channels/tides');
const archiveOf = (id) => `/packages/${id}.zip`;

/**
 * What the user does, and the successive states of both registry files, which `before` determines.
 */
const kOperations = {
  addon: {
    what: 'the installation of an addon',
    list: ['update', 'addons'],
    press: ['updatedaddons', 'Scrapbook', 'Install'],
    isAsked: false,
  },
  channel: {
    what: 'the installation of a channel',
    list: ['update', 'channels'],
    press: ['updatedchannels', 'Tides', 'Install'],
    isAsked: false,
  },
  removal: {
    what: 'a removal from both files',
    list: ['installed', 'addons'],
    press: ['installedaddons', 'Chess', 'Remove'],
    isAsked: true,
  },
};
const { addon: kAddon, channel: kChannel, removal: kRemoval } = kOperations;

const isGone = ({ press: [container, name] }) => `!${container}.innerText.includes(${JSON.stringify(name)})`;

/** Lets the user's operation run to its end; returns the registry files afterwards. */
async function complete(operation) {
  await kitbay.show(...operation.list);
  await kitbay.press(...operation.press);
  await confirmMessage();
  await page.waitFor(`${isGone(operation)} && ${allButtonsOn}`);
  return suite.registryFiles();
}

before(async () => {
  source = await UpdateSource.start();
  suite = await Suite.layOut({ KITBAY_UPDATE_SOURCE: `${source.host}/ovalink.xml` });
  client = new MainClient(suite);
  const [datastore, customRegistry] = suite.registryFiles();
  const [chess] = /<addon id="chess"[^]*?<\/addon>/.exec(datastore);
  const filled = (text) => text.replace('<root>', `<root>${kFilling}`);
  base = [filled(datastore), filled(customRegistry).replace('<addons>', `<addons>${chess}`)];
  assert.ok(base.every((text) => text.includes(kFilling)) && base[1].includes(chess));
  // Both folders exist beforehand, so that what is written to them can be watched from the start.
  for (const folder of [addon(), channel()]) fs.mkdirSync(folder, { recursive: true });
  restore();
  await start();
  const withAddon = await complete(kAddon);
  restore();
  const withChannel = await complete(kChannel);
  restore();
  const without = await complete(kRemoval);
  Object.assign(kAddon, { states: [base, withAddon] });
  Object.assign(kChannel, { states: [base, withChannel] });
  Object.assign(kRemoval, { states: [base, [without[0], base[1]], without] });
  for (const { states } of Object.values(kOperations)) assert.notDeepEqual(states[0], states.at(-1));
  assert.equal(await kitbay.close(), 0);
});
// A program left running by a failed test would interfere with the next one.
afterEach(() => kitbay.dispose());
after(async () => {
  await kitbay?.dispose();
  await client.close();
  await source.close();
  // Kitbay has not unregistered from COM, and Wine would offer its dead class objects to other
  // tests.
  await run(path.join(root, 'tools/wine_prefix'), ['--stop'], { env: { ...process.env, WINEPREFIX: prefixFolder } });
});

/** Calls `kill` as soon as something happens to the file in `folder` whose name fits. */
function watch(folder, name, kind = null, fits = () => true) {
  return (kill) => {
    const watcher = fs.watch(folder(), (event, file) => {
      if (name.test(file) && (kind === null || event === kind) && fits()) {
        watcher.close();
        kill();
      }
    });
  };
}

/**
 * Calls `kill` while the answer to the request for a package is held back after some of its bytes.
 */
const heldAfter = (id, share) => async (kill) => {
  const held = source.misbehave(archiveOf(id), 'stall');
  await held.reached;
  if (share > 0) await held.next(Math.round(source.contentOf(archiveOf(id)).length * share));
  kill();
};

const messageIsOpen = async (kill) => {
  await eventually('a message', async () => (await messages()).length > 0);
  kill();
};

/** Answers the question with yes. */
async function agree() {
  const box = await eventually('the question', async () => (await messages())[0]);
  await probe('answer', String(box.id), 'OK');
}

const kDatastore = () => path.dirname(suite.datastore);
const kCustomData = () => path.dirname(suite.customRegistry);
const kNewFile = /^~kb.*\.tmp$/;

/** Whether the kill came before the new file replaced the old one. */
const isWithinReplacing = () => leftOvers().length > 0;

/** What happens to a registry file while it is replaced; `state` is the one before. */
const replacing = (folder, file, state) => [
  [`the new ${file.source} exists`, watch(folder, kNewFile, 'rename'), state, isWithinReplacing],
  [`the new ${file.source} is being written`, watch(folder, kNewFile, 'change'), state, isWithinReplacing],
  [`${file.source} is replaced`, watch(folder, file, 'rename'), state + 1],
];

/**
 * By operation: when Kitbay is killed, in which of the operation's states the files must be then,
 * and what else must hold.
 */
const kPoints = [
  ...[
    ['its package has been requested', heldAfter('scrapbook', 0), 0],
    ['half of its package has been sent', heldAfter('scrapbook', 0.5), 0],
    ['its package arrives', watch(() => suite.workingFolder, /^scrapbook\.zip$/), 0],
    ['its first library is created', watch(addon, /^OvlPaste\.dll$/), 0],
    ['its second library is created', watch(addon, /^OvlScrapbook\.dll$/), 0],
    ...replacing(kDatastore, /olregistry.xml/, 0),
    ['its success is reported', messageIsOpen, 1],
  ].map((point) => [kAddon, ...point]),
  ...[
    ['its package has been requested', heldAfter('tides', 0), 0],
    ['its library is created', watch(channel, /^OvlTides\.dll$/), 0],
    ...replacing(kCustomData, /customregistry.xml/, 0),
    ['its success is reported', messageIsOpen, 1],
  ].map((point) => [kChannel, ...point]),
  ...[
    ['the user is asked', messageIsOpen, 0],
    ...replacing(kDatastore, /olregistry.xml/, 0),
    ...replacing(kCustomData, /customregistry.xml/, 1),
  ].map((point) => [kRemoval, ...point]),
];

/** Demands that both files are whole, and returns which of the operation's states they are in. */
function stateOf({ states }) {
  const now = suite.registryFiles();
  for (const text of now) {
    const lists = Array.from(parseXml(text).childNodes, ({ tagName }) => tagName).filter(Boolean);
    assert.deepEqual(lists.sort(), ['addons', 'channels', 'transports']);
  }
  const state = states.findIndex((texts) => texts.every((text, file) => text === now[file]));
  assert.notEqual(state, -1, `neither old nor new: ${now.map(({ length }) => length)} characters`);
  return state;
}

/** Starts the operation and waits until Kitbay has been killed at the point. */
async function killDuring(operation, arm) {
  await kitbay.show(...operation.list);
  let isKilled = false;
  arm(() => {
    if (!isKilled) kitbay.kill();
    isKilled = true;
  });
  // Requests to a program that is gone by then fail.
  const ended = kitbay.ended();
  const user = kitbay
    .press(...operation.press)
    .then(() => operation.isAsked && arm !== messageIsOpen && agree())
    .catch((error) => isKilled || Promise.reject(error));
  await Promise.race([ended, user.then(() => ended)]);
  const code = await ended;
  assert.ok(isKilled);
  assert.notEqual(code, 0);
}

/**
 * Kills Kitbay during the operation, again and again, until the kill has hit the point: watching
 * does not hold up the program, which may have moved on by the time it is killed. Every time, its
 * files are whole and in one of the operation's states.
 */
async function killedAt(t, operation, arm, state, holds = () => true, prepare = async () => {}) {
  for (let kills = 1; ; kills += 1) {
    restore();
    await prepare();
    await start();
    await killDuring(operation, arm);
    source.behave();
    const isMet = stateOf(operation) === state && holds();
    if (isMet) return t.diagnostic(`${kills} kills`);
    assert.notEqual(patience.left, 0, `${kills} kills have not met the point`);
    await kitbay.dispose();
  }
}

for (const [operation, when, arm, state, holds] of kPoints) {
  test(`killed in ${operation.what} as soon as ${when}`, (t) => killedAt(t, operation, arm, state, holds));
}

test('killed in a removal as soon as the main client has been closed for it', (t) => {
  let before;
  const isClosed = () => client.events().length > before;
  const clientLog = watch(() => suite.folder, /^Tessel\.log$/, 'change', isClosed);
  return killedAt(t, kRemoval, clientLog, 0, isClosed, async () => {
    await client.start();
    before = client.events().length;
  });
});

test('the next start works to the end', async () => {
  restore();
  await start();
  for (const operation of Object.values(kOperations)) {
    assert.deepEqual(await complete(operation), operation.states.at(-1));
    restore();
  }
  const rows = await page.eval(rowsOf('installedaddons'));
  assert.ok(!rows.some(({ name }) => name === 'Chess'));
  assert.equal(await kitbay.close(), 0);
  assert.deepEqual(suite.logEntries(), []);
});
