// Transfers that resume where they broke off, and files that are fetched only if they have changed.
import assert from 'node:assert/strict';
import { createHash } from 'node:crypto';
import fs from 'node:fs';
import path from 'node:path';
import { afterEach, beforeEach, describe } from 'node:test';
import { tagOf } from '../../standins/update_source/validated_answer.mjs';
import { UpdateSource } from '../../standins/update_source/server.mjs';
import { completed, download, exception, files, folder, forgetTransfers, message, stored, test } from './downloads.mjs';

const kPackage = '/large.zip';
const kManifest = '/ovalink.xml';

/** Bytes that are different at every place. */
const bytesOf = (seed, length) =>
  Buffer.concat(
    Array.from({ length: Math.ceil(length / 32) }, (_, at) => createHash('sha256').update(`${seed} ${at}`).digest()),
  ).subarray(0, length);

const kLength = 100_003;
const content = bytesOf('first', kLength);

let source;
beforeEach(async () => {
  forgetTransfers();
  source = await UpdateSource.start({ validates: true });
  source.publish(kPackage, content);
});
afterEach(() => source.close());

const requestFor = (path, name = 'file.zip') => ({ server: source.host, path, destination: `C:\\downloads\\${name}` });
const ask = (path = kPackage, name) => download([requestFor(path, name)]);
const cutShort = (received, path = kPackage) =>
  exception(path, `The answer was cut short: ${received} of ${kLength} bytes`);
const lastHeaders = () => source.requests.at(-1).headers;

async function cutAt(place) {
  source.misbehave(kPackage, 'validated-cut-short', { after: place });
  assert.deepEqual((await ask()).at(-1), cutShort(place));
  source.behave();
}

describe('A transfer that broke off', () => {
  test('resumes at each of 50 places in a later run of the program', async () => {
    const places = Array.from({ length: 50 }, (_, at) => Math.round((at * (kLength - 1)) / 49));
    const requests = places.map((place) => {
      const path = `/cut-${place}.zip`;
      source.publish(path, bytesOf(path, kLength));
      source.misbehave(path, 'validated-cut-short', { after: place });
      return requestFor(path, `${place}.zip`);
    });
    const told = await download(requests);
    assert.deepEqual(
      told.filter(({ event }) => event === 'Exception'),
      places.map((place) => cutShort(place, `/cut-${place}.zip`)),
    );
    assert.deepEqual(files(), []);

    source.behave();
    source.requests.length = 0;
    const again = await download(requests);
    assert.deepEqual(again.filter(({ event }) => event === 'Exception'), []);
    for (const place of places) {
      assert.ok(stored(`${place}.zip`).equals(bytesOf(`/cut-${place}.zip`, kLength)), `cut at ${place}`);
    }
    assert.deepEqual(
      source.requests.map(({ headers }) => headers.range),
      places.map((place) => (place === 0 ? undefined : `bytes=${place}-`)),
    );
  });

  test('resumes again and again', async () => {
    for (let place = 9000; place < kLength; place += 9000) {
      source.misbehave(kPackage, 'validated-cut-short', { after: 9000 });
      assert.deepEqual((await ask()).at(-1), cutShort(place));
    }
    source.behave();
    assert.deepEqual(await ask(), [message(kPackage, 'Total-Length', kLength), completed(kPackage)]);
    assert.ok(stored('file.zip').equals(content));
    assert.deepEqual([lastHeaders().range, lastHeaders()['if-range']], ['bytes=99000-', tagOf(content)]);
    // A complete file is neither kept twice nor requested in part.
    await ask();
    assert.equal(lastHeaders().range, undefined);
  });

  test('starts again if the file has changed meanwhile', async () => {
    await cutAt(5000);
    const changed = bytesOf('second', kLength - 1);
    source.publish(kPackage, changed);
    await ask();
    assert.equal(lastHeaders().range, 'bytes=5000-');
    assert.ok(stored('file.zip').equals(changed));
  });

  for (const [what, fields] of [
    ['another part', { 'Content-Range': `bytes 4999-${kLength - 1}/${kLength}` }],
    ['a part of a file of another length', { 'Content-Range': `bytes 5000-${kLength - 1}/${kLength + 1}` }],
    ['part of the part', { 'Content-Range': `bytes 5000-6000/${kLength}` }],
    ['an unknown part', { 'Content-Range': 'bytes' }],
  ]) {
    test(`starts again if the server sends ${what}`, async () => {
      await cutAt(5000);
      source.misbehave(kPackage, 'validated-cut-short', { fields });
      source.requests.length = 0;
      await ask();
      assert.deepEqual(source.requests.map(({ headers }) => headers.range), ['bytes=5000-', undefined]);
      assert.ok(stored('file.zip').equals(content));
    });
  }

  test('starts again if the server has nothing at that place', async () => {
    await cutAt(5000);
    source.misbehave(kPackage, 'status', { status: 416 });
    const [event] = await ask();
    assert.deepEqual(event, exception(kPackage, 'The server answered 416'));
    assert.deepEqual(source.requests.slice(-2).map(({ headers }) => headers.range), ['bytes=5000-', undefined]);
    source.behave();
    await ask();
    assert.ok(stored('file.zip').equals(content));
  });

  test('starts again if the server cannot identify its files', async () => {
    source.misbehave(kPackage, 'validated-cut-short', { after: 5000, fields: { ETag: `W/${tagOf(content)}` } });
    await ask();
    source.behave();
    await ask();
    assert.equal(lastHeaders().range, undefined);
    assert.ok(stored('file.zip').equals(content));
  });

  test('starts again for another source with the same destination', async () => {
    await cutAt(5000);
    const other = bytesOf('other', kLength);
    source.publish('/other.zip', other);
    await ask('/other.zip');
    assert.equal(lastHeaders().range, undefined);
    assert.ok(stored('file.zip').equals(other));
  });

  test('leaves an older file until the new one is complete', async () => {
    fs.writeFileSync(path.join(folder, 'file.zip'), 'older');
    await cutAt(5000);
    assert.equal(stored('file.zip').toString(), 'older');
    await ask();
    assert.ok(stored('file.zip').equals(content));
  });

  test('that the program ended is resumed too', async () => {
    const held = source.misbehave(kPackage, 'validated-held', { after: 5000 });
    const events = await download([requestFor(kPackage)], { ending: 'shut-down' });
    assert.equal(events.at(-1).event, 'Ended');
    await held.reached;
    source.behave();
    await ask();
    // How much of what was sent had arrived varies.
    const [, first] = /^bytes=(\d+)-$/.exec(lastHeaders().range ?? 'bytes=0-');
    assert.ok(Number(first) <= 5000);
    assert.ok(stored('file.zip').equals(content));
  });
});

describe('A list of components that is there', () => {
  const askForList = () => ask(kManifest, 'file.xml');

  test('is sent again only when it has changed', async () => {
    await askForList();
    const yesterday = new Date(Date.now() - 24 * 60 * 60 * 1000);
    fs.utimesSync(path.join(folder, 'file.xml'), yesterday, yesterday);
    assert.deepEqual(await askForList(), [completed(kManifest)]);
    const headers = lastHeaders();
    assert.deepEqual(
      [headers['if-none-match'], headers['if-modified-since']],
      [tagOf(source.contentOf(kManifest)), 'Sat, 21 Nov 2026 10:15:30 GMT'],
    );
    assert.deepEqual(stored(), source.contentOf(kManifest));
    assert.ok(Date.now() - fs.statSync(path.join(folder, 'file.xml')).mtimeMs < 12 * 60 * 60 * 1000, 'it is of today');

    source.publish(kManifest, '<components/>');
    assert.deepEqual(await askForList(), [message(kManifest, 'Total-Length', 13), completed(kManifest)]);
    assert.equal(stored().toString(), '<components/>');
    await askForList();
    assert.equal(lastHeaders()['if-none-match'], tagOf('<components/>'));
  });

  for (const [what, change] of [
    ['was changed by somebody else', (file) => fs.appendFileSync(file, ' ')],
    ['has been deleted', (file) => fs.rmSync(file)],
  ]) {
    test(`is sent again if it ${what}`, async () => {
      await askForList();
      change(path.join(folder, 'file.xml'));
      await askForList();
      assert.equal(lastHeaders()['if-none-match'], undefined);
      assert.deepEqual(stored(), source.contentOf(kManifest));
    });
  }

  test('does not accept "not changed" unless it asked for that', async () => {
    source.misbehave(kManifest, 'status', { status: 304 });
    assert.deepEqual(await askForList(), [exception(kManifest, 'The server answered 304')]);
    assert.deepEqual(files(), []);
  });

  for (const announced of [true, false]) {
    test(`may have 64 MB and no more, ${announced ? 'which is announced' : 'whatever is announced'}`, async () => {
      const most = 64 * 1024 * 1024;
      const tooLarge = exception(kManifest, 'The server\'s list of components is larger than 64 MB');
      source.misbehave(kManifest, 'zeros', { bytes: most + 1, announced });
      assert.deepEqual(await askForList(), [tooLarge]);
      assert.deepEqual(files(), []);
      source.misbehave(kManifest, 'zeros', { bytes: most, announced });
      assert.deepEqual((await askForList()).at(-1), completed(kManifest));
      assert.equal(stored().length, most);
    });
  }
});

test('A file that is larger than the free disk space is not begun', async () => {
  const bytes = 2 ** 50;
  source.misbehave(kPackage, 'validated-cut-short', { fields: { 'Content-Length': bytes } });
  const [event, ...more] = await ask();
  assert.deepEqual(more, []);
  assert.match(event.message, /^There is no room for the file: it takes 1073741824 MB, and the disk has \d+ MB left$/);
  assert.deepEqual(files(), []);
});

test('A compressed answer that was not requested is refused', async () => {
  source.misbehave(kManifest, 'validated-cut-short', { fields: { 'Content-Encoding': 'gzip' } });
  assert.deepEqual(await ask(kManifest, 'file.xml'), [
    exception(kManifest, 'The server\'s answer is compressed, which was not asked for'),
  ]);
  assert.equal(lastHeaders()['accept-encoding'], 'identity');
});
