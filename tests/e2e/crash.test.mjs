// A process that changes the registry files is killed at every point of its work and during the
// replacement of a file itself. The files are always whole and have the old or the new contents.
// The process is crash_client, which runs Kitbay's procedures that enter and remove components on
// the real files, but with an empty page, without packages, and with file operations that can be
// stopped; killed_program.test.mjs kills Kitbay.exe itself.
import assert from 'node:assert/strict';
import { spawn } from 'node:child_process';
import { once } from 'node:events';
import fs from 'node:fs';
import path from 'node:path';
import { createInterface } from 'node:readline';
import { after, before, test as nodeTest } from 'node:test';
import { buildFolder, eventually, prefixFolder, root, windowsPath } from './harness.mjs';
import { parseXml } from './xml.mjs';

// Each test starts dozens of programs; a machine that is kept busy takes ten seconds for one.
const test = (name, body) => nodeTest(name, { timeout: 1200000 }, body);
const client = path.join(buildFolder, 'tests/e2e/crash/crash_client.exe');
const folder = path.join(prefixFolder, 'drive_c/crash');
const userFolder = path.join(folder, 'user');
const datastore = path.join(folder, 'Datastore/olregistry.xml');
const customRegistry = path.join(userFolder, 'customregistry.xml');
const kPoints = 20;

// In the form in which the XML library writes it, so that a removal restores exactly these bytes.
const kDatastore = `<?xml version="1.0"?>
<root><!-- the suite's -->
  <addons><addon id="notes" name="notes"><core>0</core></addon></addons>
  <transports/><channels>
</channels></root>
`;
const kOffers = `<components>
<addons><addon id="chess" type="game"><name>chess</name><description>d</description><progid>p</progid>
<filename>f</filename><category/><autoaccept>0</autoaccept><params/><offline>0</offline><dependencies/></addon></addons>
<transports><transport id="relay"><name>relay</name><version>1</version><progid>p</progid><filename>f</filename>
<category/><displayname>d</displayname><instructions>i</instructions></transport></transports>
<channels>${['presence', 'news']
  .map(
    (id) => `<channel id="${id}"><name>${id}</name><version>1</version><description>d</description><progid>p</progid>
<filename/><category/><dependencies/><xmlfilename>x</xmlfilename></channel>`,
  )
  .join('')}</channels></components>`;
const kComponents = ['addon chess', 'transport relay', 'channel presence', 'channel news'];

function write(file, content) {
  fs.mkdirSync(path.dirname(file), { recursive: true });
  fs.writeFileSync(file, content);
}

/** The contents of both files; null for a missing one. */
const state = () =>
  [datastore, customRegistry].map((file) => (fs.existsSync(file) ? fs.readFileSync(file, 'utf8') : null));

function restore(contents) {
  fs.rmSync(userFolder, { recursive: true, force: true });
  fs.rmSync(path.dirname(datastore), { recursive: true, force: true });
  fs.mkdirSync(userFolder, { recursive: true });
  [datastore, customRegistry].forEach((file, i) => contents[i] === null || write(file, contents[i]));
}

/** The names in both folders other than those of the files themselves. */
const leftOvers = () =>
  [path.dirname(datastore), userFolder]
    .flatMap((place) => fs.readdirSync(place))
    .filter((name) => !['olregistry.xml', 'customregistry.xml'].includes(name));

/**
 * Starts the client in a separate process group. Returns its lines and `kill`, which ends it at
 * once, wherever it is.
 */
function start(...words) {
  const child = spawn(
    path.join(root, 'tools/wine_run'),
    [client, windowsPath(folder), windowsPath(userFolder), ...words.map(String)],
    { env: { ...process.env, WINEPREFIX: prefixFolder }, stdio: ['ignore', 'pipe', 'inherit'], detached: true },
  );
  const ended = once(child, 'exit');
  const lines = createInterface(child.stdout)[Symbol.asyncIterator]();
  return {
    line: async () => (await lines.next()).value,
    signal: (name) => process.kill(-child.pid, name),
    kill: async () => {
      process.kill(-child.pid, 'SIGKILL');
      await ended;
      // The pipe ends when the last process that could still write to it has ended.
      while (!(await lines.next()).done);
    },
    end: async () => assert.equal((await ended)[0], 0),
  };
}

/** Lets the client run to its end and returns the number of points. */
async function complete(...words) {
  const run = start(...words);
  const line = await run.line();
  assert.match(line, /^done ?\d*$/);
  await run.end();
  return Number(line.split(' ')[1]);
}

const steps = (verb, components) => components.flatMap((component) => [verb, ...component.split(' ')]);

/** The successive contents of each file while the components are processed. */
async function statesOnTheWay(verb, first) {
  restore(first);
  const states = [state()];
  for (const component of kComponents) {
    await complete(0, ...steps(verb, [component]));
    states.push(state());
  }
  return states;
}

/** A registry file that exists must be a complete document with its three lists. */
function checkWhole(content) {
  if (content === null) return;
  const lists = Array.from(parseXml(content).childNodes, ({ tagName }) => tagName).filter(Boolean);
  assert.deepEqual(lists.sort(), ['addons', 'channels', 'transports']);
}

async function checkSweep() {
  const kept = path.join(userFolder, '~kept.tmp');
  const before = state();
  write(kept, 'not ours');
  await complete('sweep');
  assert.deepEqual(leftOvers(), ['~kept.tmp']);
  assert.deepEqual(state(), before);
  fs.rmSync(kept);
}

/** Kills the client at points spread over its run, each before or after a file operation. */
async function killOnTheWay(verb, states, allowedBesides = []) {
  const words = steps(verb, kComponents);
  restore(states[0]);
  const points = await complete(0, ...words);
  assert.ok(points >= kPoints, `there are only ${points} points`);
  assert.deepEqual(state(), states.at(-1));
  let reached = 0;
  for (let i = 1; i <= kPoints; ++i) {
    const stop = Math.round((i * points) / kPoints);
    restore(states[0]);
    const run = start(stop, ...words);
    assert.equal(await run.line(), 'stopped');
    await run.kill();
    const now = state();
    now.forEach(checkWhole);
    const at = states.findIndex(
      ([suite, user]) => now[0] === suite && (now[1] === user || allowedBesides.includes(now[1])),
    );
    assert.ok(at >= reached, `point ${stop}: neither old nor new, but ${JSON.stringify(now)}`);
    reached = at;
    assert.deepEqual(leftOvers(), []);
  }
  assert.equal(reached, states.length - 1);
}

/** Stops a run again and again until it is in the middle of a replacement, and kills it there. */
async function killWithinReplacing(run) {
  await eventually('a stop during a replacement', () => {
    run.signal('SIGSTOP');
    if (leftOvers().length > 0) return true;
    run.signal('SIGCONT');
    return false;
  });
  await run.kill();
}

const kEmptyCustomRegistry =
  '<root><transports></transports><addons></addons><channels></channels></root> ';

before(() => {
  fs.rmSync(folder, { recursive: true, force: true });
  write(path.join(folder, 'Kitbay/offers.xml'), kOffers);
});
after(() => fs.rmSync(folder, { recursive: true, force: true }));

test(`killed at ${kPoints} points of an installation`, async () => {
  const states = await statesOnTheWay('install', [kDatastore, null]);
  assert.equal(new Set(states.map(String)).size, kComponents.length + 1);
  await killOnTheWay('install', states, [kEmptyCustomRegistry]);
});

test(`killed at ${kPoints} points of a removal`, async () => {
  restore([kDatastore, null]);
  await complete(0, ...steps('install', kComponents));
  const states = await statesOnTheWay('remove', state());
  assert.equal(states.at(-1)[0], kDatastore);
  await killOnTheWay('remove', states);
});

test('killed during the replacement itself', async (t) => {
  // Large, so that most of the time is spent writing the new file.
  const filling = `<!--${'x'.repeat(4000000)}-->`;
  const old = kDatastore.replace('<!-- the suite\'s -->', filling);
  restore([old, null]);
  await complete(0, 'install', 'addon', 'chess');
  const states = [old, state()[0]];
  const seen = [0, 0];
  // The system may still complete a rename that the stopped process requested.
  for (let left = 0; left < kPoints; ) {
    restore([old, null]);
    const run = start('again', 'addon', 'chess');
    assert.equal(await run.line(), 'begun');
    await killWithinReplacing(run);
    const now = fs.readFileSync(datastore, 'utf8');
    const which = states.indexOf(now);
    assert.notEqual(which, -1, `neither old nor new: ${now.length} bytes`);
    ++seen[which];
    left += leftOvers().length;
    assert.ok(leftOvers().every((name) => /^~kb\d+-\d+\.tmp$/.test(name)), String(leftOvers()));
    if (leftOvers().length > 0) await checkSweep();
  }
  t.diagnostic(`the old file ${seen[0]} times, the new one ${seen[1]} times`);
});
