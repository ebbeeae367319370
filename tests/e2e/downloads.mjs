// The client of the suite's download object, and what it is told.
import assert from 'node:assert/strict';
import { spawn } from 'node:child_process';
import { once } from 'node:events';
import fs from 'node:fs';
import path from 'node:path';
import { createInterface } from 'node:readline';
import { after, beforeEach, test as nodeTest } from 'node:test';
import { downloadClient, prefixFolder, root, wine } from './harness.mjs';

const kSettings = 'HKCU\\Software\\Ovalink';
export const folder = path.join(prefixFolder, 'drive_c/downloads');
export const destination = 'C:\\downloads\\file.xml';
/** A test that waits for events; the limit only catches what never happens. */
export const test = (name, body) => nodeTest(name, { timeout: 600000 }, body);

/**
 * Runs the client and returns the events that it was told. `onEvent` gets each one immediately.
 * Requests are {server, path, destination}; the first destination is held until `held` attempts to
 * replace it have failed.
 */
export async function download(requests, { ending = null, held = 0, onEvent = () => {} } = {}) {
  const words = requests.flatMap((request) => [request.server, request.path, request.destination ?? destination]);
  const client = spawn(
    path.join(root, 'tools/wine_run'),
    [downloadClient, ...(ending ? [`--${ending}`] : []), ...(held > 0 ? ['--held', held] : []), ...words],
    { env: { ...process.env, WINEPREFIX: prefixFolder }, stdio: ['ignore', 'pipe', 'inherit'] },
  );
  const ended = once(client, 'exit');
  const events = [];
  for await (const line of createInterface(client.stdout)) {
    events.push(JSON.parse(line));
    onEvent(events.at(-1));
  }
  assert.equal((await ended)[0], 0, JSON.stringify(events));
  assert.deepEqual(events.pop(), { event: 'Gone', library: 'free' });
  return events;
}

export const message = (path, field, value) => ({ event: 'Message', path, field, value: String(value) });
export const exception = (path, text) => ({ event: 'Exception', path, message: text });
export const completed = (path) => message(path, 'Completed', 'true');
export const arrived = (path, content) => [message(path, 'Total-Length', content.length), completed(path)];
export const files = () => fs.readdirSync(folder).sort();
export const stored = (name = 'file.xml') => fs.readFileSync(path.join(folder, name));
export const set = (name, data) => wine('reg', 'add', kSettings, '/v', name, '/d', data, '/f');
export const unset = (name) => wine('reg', 'delete', kSettings, '/v', name, '/f').catch(() => {});

/** Deletes what the user keeps of earlier transfers. */
export function forgetTransfers() {
  for (const user of fs.readdirSync(path.join(prefixFolder, 'drive_c/users'))) {
    const kept = path.join(prefixFolder, 'drive_c/users', user, 'AppData/Local/Ovalink/Transfers');
    fs.rmSync(kept, { recursive: true, force: true });
  }
}

after(() => fs.rmSync(folder, { recursive: true, force: true }));
beforeEach(() => {
  fs.rmSync(folder, { recursive: true, force: true });
  fs.mkdirSync(folder);
});
