// Honest transfers from the web servers that operators use.
import assert from 'node:assert/strict';
import { randomBytes } from 'node:crypto';
import fs from 'node:fs';
import path from 'node:path';
import { after, before, beforeEach, describe } from 'node:test';
import { arrived, completed, download, exception, files, folder, forgetTransfers, stored, test } from './downloads.mjs';
import { trustAuthority } from './harness.mjs';
import { relayTo, WebServer, webServers } from './web_servers.mjs';

const kList = Buffer.from(`<components>${'<addons/>'.repeat(2000)}</components>`);
const large = randomBytes(3_000_001);

for (const kind of webServers) {
  describe(kind, () => {
    let server;
    before(async () => {
      await trustAuthority();
      server = await WebServer.start(kind);
    });
    after(() => server.close());
    beforeEach(() => {
      forgetTransfers();
      server.publish('list.xml', kList);
      server.publish('large.zip', large);
    });

    const pathAt = (port, name) => `//127.0.0.1:${port}/${name}`;
    const securely = (name, port = server.securePort, destination = `C:\\downloads\\${name}`) => ({
      server: 'https:', path: pathAt(port, name), destination,
    });

    test('delivers complete files of every size, one after another', async () => {
      server.publish('empty.zip', '');
      const events = await download(['list.xml', 'empty.zip', 'large.zip'].map((name) => securely(name)));
      const ends = events.filter(({ field }) => field !== 'Received');
      const contents = { 'list.xml': kList, 'empty.zip': Buffer.alloc(0), 'large.zip': large };
      assert.deepEqual(
        ends,
        Object.entries(contents).flatMap(([name, content]) => arrived(pathAt(server.securePort, name), content)),
      );
      for (const [name, content] of Object.entries(contents)) assert.ok(stored(name).equals(content), name);
      assert.deepEqual(files(), Object.keys(contents).sort());
    });

    test('redirects plain HTTP to HTTPS', async () => {
      const plain = `127.0.0.1:${server.plainPort}`;
      const events = await download([{ server: plain, path: '/list.xml' }]);
      assert.deepEqual(events, arrived('/list.xml', kList));
      assert.deepEqual(stored(), kList);
      assert.deepEqual(server.answers().slice(-2), ['GET /list.xml 301', 'GET /list.xml 200']);
    });

    test('has no other file', async () => {
      const [event] = await download([securely('none.xml')]);
      assert.deepEqual(event, exception(pathAt(server.securePort, 'none.xml'), 'The server answered 404 (Not Found)'));
    });

    test('compresses for others, and sends Kitbay the file as it is', async () => {
      // The server is contacted as by a browser.
      const { get } = await import('node:https');
      const encoding = await new Promise((resolve, reject) => {
        const options = { rejectUnauthorized: false, headers: { 'Accept-Encoding': 'gzip' } };
        get(`https://127.0.0.1:${server.securePort}/list.xml`, options, (answer) => {
          answer.resume().on('end', () => resolve(answer.headers['content-encoding']));
        }).on('error', reject);
      });
      assert.equal(encoding, 'gzip');
      await download([securely('list.xml')]);
      assert.deepEqual(stored('list.xml'), kList);
    });

    test('sends a list again only if it has changed', async () => {
      const events = await download([securely('list.xml'), securely('list.xml')]);
      const asked = pathAt(server.securePort, 'list.xml');
      assert.deepEqual(events, [...arrived(asked, kList), completed(asked)]);
      assert.deepEqual(server.answers().slice(-2), ['GET /list.xml 200', 'GET /list.xml 304']);
      assert.deepEqual(stored('list.xml'), kList);

      const changed = Buffer.from('<components/>');
      server.publish('list.xml', changed);
      assert.deepEqual(await download([securely('list.xml')]), arrived(asked, changed));
      assert.deepEqual(stored('list.xml'), changed);
    });

    test('resumes a package that was cut off, in a later run of the program', async (t) => {
      // The first bytes belong to the handshake; the last cuts are near the end of the file.
      const limits = [20_000, 500_000, 1_234_567, 2_900_000, 3_000_000];
      const relay = await relayTo(server.securePort, limits);
      t.after(() => relay.close());
      const requests = limits.map((limit) =>
        securely('large.zip', relay.address().port, `C:\\downloads\\${limit}.zip`));
      const told = await download(requests);
      assert.equal(told.filter(({ event }) => event === 'Exception').length, limits.length);
      assert.deepEqual(files(), []);

      const again = await download(requests);
      assert.deepEqual(again.filter(({ event }) => event === 'Exception'), []);
      for (const limit of limits) assert.ok(stored(`${limit}.zip`).equals(large), `cut after ${limit}`);
      assert.deepEqual(server.answers().slice(-limits.length), limits.map(() => 'GET /large.zip 206'));
    });

    test('starts again if a package was replaced after the cut', async (t) => {
      const relay = await relayTo(server.securePort, [500_000]);
      t.after(() => relay.close());
      const request = securely('large.zip', relay.address().port);
      await download([request]);
      const changed = randomBytes(large.length);
      server.publish('large.zip', changed);
      await download([request]);
      assert.ok(stored('large.zip').equals(changed));
      assert.equal(server.answers().at(-1), 'GET /large.zip 200');
    });

    test('replaces an older file', async () => {
      fs.writeFileSync(path.join(folder, 'list.xml'), 'older');
      await download([securely('list.xml')]);
      assert.deepEqual(stored('list.xml'), kList);
    });
  });
}
