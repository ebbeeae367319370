// Everything that an installation, an update or a removal may change, recorded before it and
// compared after it.
import assert from 'node:assert/strict';
import { createHash } from 'node:crypto';
import fs from 'node:fs';
import path from 'node:path';
import { messages, prefixFolder, rowsOf } from './harness.mjs';

export const kFolder = 'a folder';
const kContainers = ['addons', 'transports', 'channels'].flatMap((kind) => [`installed${kind}`, `updated${kind}`]);
const kAllRows = `({${kContainers.map((container) => `${container}: ${rowsOf(container)}`).join(',')}})`;

export const sumOf = (bytes) => createHash('sha256').update(bytes).digest('hex');

/** Every path below a folder with what is there: a file's hash, or the fact that it is a folder. */
function sumsBelow(folder, leftOut = []) {
  const found = {};
  for (const entry of fs.readdirSync(folder, { withFileTypes: true })) {
    const place = path.join(folder, entry.name);
    if (leftOut.includes(place)) continue;
    if (entry.isDirectory()) Object.assign(found, { [place]: kFolder }, sumsBelow(place, leftOut));
    else found[place] = entry.isFile() ? sumOf(fs.readFileSync(place)) : 'neither file nor folder';
  }
  return found;
}

/** What must exist once everything in the folder `content` is also in the folder `place`. */
export function placed(content, place) {
  const there = Object.entries(sumsBelow(content)).map(([file, sum]) => [path.join(place, path.relative(content, file)), sum]);
  return { [place]: kFolder, ...Object.fromEntries(there) };
}

/**
 * The files of the suite and of its user with their contents; everything else on the drive and
 * among the programs only by name. Leaves out what is compared separately, and the main client's
 * log.
 */
function files(suite) {
  const drive = path.join(prefixFolder, 'drive_c');
  const leftOut = [suite.datastore, suite.customRegistry, suite.log, suite.workingFolder];
  leftOut.push(path.join(suite.folder, 'Tessel.log'));
  const names = [drive, path.dirname(suite.folder)].flatMap((folder) =>
    fs.readdirSync(folder).map((name) => [path.join(folder, name), kFolder]));
  return { ...Object.fromEntries(names), ...sumsBelow(suite.folder, leftOut), ...sumsBelow(suite.userFolder, leftOut) };
}

const working = ({ workingFolder }) =>
  Object.fromEntries(
    fs.readdirSync(workingFolder).map((name) => [name, sumOf(fs.readFileSync(path.join(workingFolder, name)))]),
  );

async function rows(page) {
  const all = await page.eval(kAllRows);
  return Object.fromEntries(kContainers.map((name) => [name, all[name].map(({ open, ...row }) => row)]));
}

const log = (suite) =>
  suite.logEntries().map(({ number, procedure, description }) => [number, procedure, description]);

/** Everything in its current state, while the program runs with its page loaded. */
export async function everything(suite, page) {
  return {
    files: files(suite),
    registry: suite.registryFiles(),
    rows: await rows(page),
    log: log(suite),
    working: working(suite),
  };
}

/**
 * Demands that everything is as it was `before`, except for `changes`: `files` and `working` are
 * what was created or replaced; `registry` maps a registry file's canonical XML (and its place) to
 * the expected XML; each function in `rows` maps a container's rows; `log` has the entries that
 * were added. No message may be open.
 */
export async function demandOnly(changes, before, suite, page) {
  assert.deepEqual(files(suite), { ...before.files, ...changes.files });
  suite.demandRegistryFiles(before.registry, changes.registry ?? ((text) => text));
  const expected = { ...before.rows };
  for (const [name, change] of Object.entries(changes.rows ?? {})) expected[name] = change(before.rows[name]);
  assert.deepEqual(await rows(page), expected);
  assert.deepEqual(log(suite), [...before.log, ...(changes.log ?? [])]);
  assert.deepEqual(working(suite), { ...before.working, ...changes.working });
  assert.deepEqual((await messages()).map(({ caption }) => caption), []);
}
