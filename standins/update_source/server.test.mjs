import assert from 'node:assert/strict';
import { spawn } from 'node:child_process';
import dns from 'node:dns';
import { once } from 'node:events';
import fs from 'node:fs';
import http from 'node:http';
import https from 'node:https';
import net from 'node:net';
import tls from 'node:tls';
import { createInterface } from 'node:readline';
import { describe, test as nodeTest } from 'node:test';
import { fileURLToPath } from 'node:url';
import { UpdateSource } from './server.mjs';

// A source listens on 127.0.0.1 only. Before version 20, Node tried nothing but the first address of "localhost",
// which may be ::1.
dns.setDefaultResultOrder('ipv4first');

const kManifest = '/ovalink.xml';
const test = (name, body) => nodeTest(name, { timeout: 60000 }, body);

/** Starts a source that is closed when the test ends. */
async function start(t, options) {
  const source = await UpdateSource.start(options);
  t.after(() => source.close());
  return source;
}

/** Requests a path on a separate connection; returns what was collected and the connection. */
function ask(host, path) {
  const [name, port] = host.split(':');
  const socket = net.connect(Number(port), name);
  const answer = { socket, bytes: Buffer.alloc(0), error: null };
  answer.collected = (length) =>
    new Promise((resolve) => {
      const look = () => answer.body.length >= length && (socket.off('data', look), resolve());
      socket.on('data', look);
      look();
    });
  socket.on('data', (data) => (answer.bytes = Buffer.concat([answer.bytes, data])));
  socket.on('error', (error) => (answer.error = error.code));
  answer.ended = new Promise((resolve) => socket.on('close', () => resolve(answer)));
  Object.defineProperty(answer, 'head', { get: () => split(answer.bytes)[0] });
  Object.defineProperty(answer, 'body', { get: () => split(answer.bytes)[1] });
  socket.write(`GET ${path} HTTP/1.1\r\nHost: ${host}\r\nConnection: close\r\n\r\n`);
  return answer;
}

function split(bytes) {
  const end = bytes.indexOf('\r\n\r\n');
  return end < 0 ? ['', Buffer.alloc(0)] : [bytes.subarray(0, end).toString(), bytes.subarray(end + 4)];
}

const answerOf = (source, path = kManifest) => ask(source.host, path).ended;
const announced = (answer) => Number(/^content-length: (\d+)/im.exec(answer.head)?.[1] ?? NaN);
const location = (answer) => /^location: (.*)/im.exec(answer.head)?.[1];
const status = (answer) => Number(answer.head.split(' ')[1]);

describe('An honest source', () => {
  test('serves a manifest with its own origin in the package URLs', async (t) => {
    const source = await start(t);
    const answer = await answerOf(source);
    assert.equal(status(answer), 200);
    assert.equal(announced(answer), answer.body.length);
    const urls = [...answer.body.toString().matchAll(/<url>(.*)<\/url>/g)].map(([, url]) => url);
    assert.equal(urls.length, 12);
    for (const url of urls) assert.match(url, new RegExp(`^http://${source.host}/packages/[a-z]+\\.zip$`));
  });

  test('answers 404 for what it does not have and what lies outside its folders', async (t) => {
    const source = await start(t);
    for (const path of ['/none.xml', '/packages/none.zip', '/../server.mjs', '/packages/../../CMakeCache.txt']) {
      assert.equal(status(await answerOf(source, path)), 404, path);
    }
  });

  test('keeps the requests, in order', async (t) => {
    const source = await start(t);
    const second = source.request('/partners.xml');
    await answerOf(source);
    await answerOf(source, '/partners.xml');
    assert.deepEqual(source.requests.map((request) => request.path), [kManifest, '/partners.xml']);
    assert.equal((await second).host, source.host);
    await (await second).closed;
  });

  test('serves what a test publishes', async (t) => {
    const source = await start(t);
    source.publish('/own.xml', '<url>@ORIGIN@/packages/own.zip</url>');
    source.publish('/packages/own.zip', Buffer.from([0x50, 0x4b, 0xff]));
    const manifest = await answerOf(source, '/own.xml');
    assert.equal(manifest.body.toString(), `<url>http://${source.host}/packages/own.zip</url>`);
    assert.deepEqual((await answerOf(source, '/packages/own.zip')).body, Buffer.from([0x50, 0x4b, 0xff]));
  });

  test('has a port where nobody listens', async (t) => {
    const source = await start(t);
    const port = await source.closedPort();
    t.after(port.release);
    assert.equal((await ask(port.host, kManifest).ended).error, 'ECONNREFUSED');
  });
});

describe('The source as a program', () => {
  test('prints where it listens, and misbehaves according to its arguments', async (t) => {
    const script = fileURLToPath(new URL('server.mjs', import.meta.url));
    const program = spawn(process.execPath, [script, '/partners.xml=404'], { stdio: ['ignore', 'pipe', 'inherit'] });
    const ended = once(program, 'exit');
    t.after(async () => {
      program.kill();
      await ended;
    });
    const [line] = await once(createInterface(program.stdout), 'line');
    assert.match(line, /^127\.0\.0\.1:\d+$/);
    assert.equal(status(await ask(line, kManifest).ended), 200);
    assert.equal(status(await ask(line, '/partners.xml').ended), 404);
  });
});

describe('A misbehaving source', () => {
  test('misbehaves at the named path only, until it is told to behave', async (t) => {
    const source = await start(t);
    source.misbehave(kManifest, '500');
    assert.equal(status(await answerOf(source)), 500);
    assert.equal(status(await answerOf(source, '/partners.xml')), 200);
    source.behave(kManifest);
    assert.equal(status(await answerOf(source)), 200);
    assert.throws(() => source.misbehave(kManifest, 'nonsense'), /no misbehaviour/);
    assert.throws(() => source.misbehave('/nowhere.xml', '500'), /Nothing is served/);
  });

  test('resets the connection', async (t) => {
    const source = await start(t);
    source.misbehave(kManifest, 'refuse');
    const answer = await answerOf(source);
    assert.equal(answer.error, 'ECONNRESET');
    assert.equal(answer.bytes.length, 0);
  });

  test('stalls before the answer, and continues when told to', async (t) => {
    const source = await start(t);
    const stall = source.misbehave(kManifest, 'stall');
    const answer = ask(source.host, kManifest);
    await stall.reached;
    assert.equal(answer.bytes.length, 0);
    await stall.rest();
    await answer.ended;
    assert.deepEqual(answer.body, source.contentOf(kManifest));
  });

  test('sees that a client gives up on a stall', async (t) => {
    const source = await start(t);
    const stall = source.misbehave(kManifest, 'stall');
    const answer = ask(source.host, kManifest);
    await stall.reached;
    answer.socket.destroy();
    await (await source.request(kManifest)).closed;
    assert.equal(stall.sent, 0);
  });

  test('stalls in the body after some bytes', async (t) => {
    const source = await start(t);
    const stall = source.misbehave(kManifest, 'stall-body', { after: 33 });
    const answer = ask(source.host, kManifest);
    await stall.reached;
    await answer.collected(33);
    assert.equal(answer.body.length, 33);
    assert.equal(stall.sent, 33);
    assert.equal(announced(answer), source.contentOf(kManifest).length);
    await stall.rest();
    await answer.ended;
    assert.deepEqual(answer.body, source.contentOf(kManifest));
  });

  test('drips as many bytes as requested', async (t) => {
    const source = await start(t);
    source.publish('/five.xml', 'abcde');
    const drip = source.misbehave('/five.xml', 'drip');
    const answer = ask(source.host, '/five.xml');
    await drip.reached;
    assert.equal(answer.body.length, 0);
    assert.equal(await drip.next(), false);
    await answer.collected(1);
    assert.equal(answer.body.toString(), 'a');
    assert.equal(await drip.next(3), false);
    await answer.collected(4);
    assert.equal(answer.body.toString(), 'abcd');
    assert.equal(await drip.next(), true);
    await answer.ended;
    assert.equal(answer.body.toString(), 'abcde');
  });

  test('cuts the content short', async (t) => {
    const source = await start(t);
    source.misbehave(kManifest, 'cut-short', { after: 100 });
    const answer = await answerOf(source);
    assert.equal(announced(answer), source.contentOf(kManifest).length);
    assert.deepEqual(answer.body, source.contentOf(kManifest).subarray(0, 100));
    assert.equal(answer.error, null);
  });

  test('resets the connection in the body', async (t) => {
    const source = await start(t);
    const stall = source.misbehave(kManifest, 'stall-body', { after: 100 });
    const answer = ask(source.host, kManifest);
    await stall.reached;
    await answer.collected(100);
    stall.breakOff();
    await answer.ended;
    assert.equal(answer.error, 'ECONNRESET');
    assert.equal(answer.body.length, 100);
  });

  test('sends more than it announced', async (t) => {
    const source = await start(t);
    source.misbehave(kManifest, 'too-much', { extra: 10 });
    const answer = await answerOf(source);
    const { length } = source.contentOf(kManifest);
    assert.equal(announced(answer), length);
    assert.equal(answer.body.length, length + 10);
  });

  test('announces less than the content', async (t) => {
    const source = await start(t);
    source.misbehave(kManifest, 'too-much', { announced: 5, extra: 0 });
    const answer = await answerOf(source);
    assert.equal(announced(answer), 5);
    assert.deepEqual(answer.body, source.contentOf(kManifest));
  });

  test('announces no length', async (t) => {
    const source = await start(t);
    source.misbehave(kManifest, 'no-length');
    const answer = await answerOf(source);
    assert.doesNotMatch(answer.head, /content-length|transfer-encoding/i);
    assert.deepEqual(answer.body, source.contentOf(kManifest));
  });

  test('sends chunks, all of them or not', async (t) => {
    const source = await start(t);
    const content = source.contentOf(kManifest);
    source.misbehave(kManifest, 'chunked');
    const answer = await fetch(source.origin + kManifest);
    assert.equal(answer.headers.get('transfer-encoding'), 'chunked');
    assert.deepEqual(Buffer.from(await answer.arrayBuffer()), content);

    source.misbehave(kManifest, 'chunked-cut-short');
    const short = await answerOf(source);
    assert.match(short.head, /transfer-encoding: chunked/i);
    assert.ok(short.body.includes(content.subarray(0, 2000)));
    assert.ok(!short.body.toString().endsWith('0\r\n\r\n'));
    const [cut] = await once(http.get(source.origin + kManifest), 'response');
    await assert.rejects(cut.toArray(), { code: 'ECONNRESET' });
  });

  test('redirects within the host, to another name of it, and away from it', async (t) => {
    const source = await start(t);
    const elsewhere = await start(t);
    for (const [to, expected] of [
      ['/partners.xml', `${source.origin}/partners.xml`],
      [`${source.otherOrigin}/partners.xml`, `http://localhost:${source.port}/partners.xml`],
      [`${elsewhere.origin}/partners.xml`, `${elsewhere.origin}/partners.xml`],
    ]) {
      source.misbehave(kManifest, 'redirect', { to });
      const answer = await answerOf(source);
      assert.equal(status(answer), 302);
      assert.equal(location(answer), expected);
      const followed = await (await fetch(source.origin + kManifest)).text();
      assert.match(followed, /id="meshnet"/);
    }
  });

  test('redirects in a circle', async (t) => {
    const source = await start(t);
    source.misbehave(kManifest, 'redirect-loop');
    assert.equal(location(await answerOf(source)), source.origin + kManifest);
    await assert.rejects(fetch(source.origin + kManifest), (error) => /redirect count/.test(error.cause.message));
  });

  for (const code of [401, 404, 500]) {
    test(`answers ${code}`, async (t) => {
      const source = await start(t);
      source.misbehave(kManifest, String(code));
      const answer = await answerOf(source);
      assert.equal(status(answer), code);
      assert.equal(/^www-authenticate: basic/im.test(answer.head), code === 401);
      assert.equal(announced(answer), answer.body.length);
    });
  }

  test('answers any other status', async (t) => {
    const source = await start(t);
    source.misbehave(kManifest, 'status', { status: 503 });
    assert.match((await answerOf(source)).head, /^HTTP\/1.1 503 Service Unavailable/);
  });

  test('serves a login page as if all were well', async (t) => {
    const source = await start(t);
    source.misbehave(kManifest, 'login-page');
    const answer = await answerOf(source);
    assert.equal(status(answer), 200);
    assert.match(answer.head, /content-type: text\/html/i);
    assert.match(answer.body.toString(), /type="password"/);
    assert.equal(announced(answer), answer.body.length);
  });

  test('serves an empty body', async (t) => {
    const source = await start(t);
    source.misbehave(kManifest, 'empty');
    const answer = await answerOf(source);
    assert.equal(status(answer), 200);
    assert.equal(announced(answer), 0);
    assert.equal(answer.body.length, 0);
  });

  test('serves 100 MB of zeros', async (t) => {
    const source = await start(t);
    source.misbehave(kManifest, 'zeros');
    const answer = await fetch(source.origin + kManifest);
    assert.equal(answer.headers.get('content-length'), String(100 * 1024 * 1024));
    let received = 0;
    const none = Buffer.alloc(65536);
    for await (const piece of answer.body) {
      received += piece.length;
      for (let at = 0; at < piece.length; at += none.length) {
        const part = piece.subarray(at, at + none.length);
        assert.equal(none.compare(part, 0, part.length, 0, part.length), 0);
      }
    }
    assert.equal(received, 100 * 1024 * 1024);
  });

  test('serves chunks without an end until the client hangs up', async (t) => {
    const source = await start(t);
    const endless = source.misbehave(kManifest, 'endless');
    const answer = ask(source.host, kManifest);
    await answer.collected(1000);
    assert.match(answer.head, /transfer-encoding: chunked/i);
    answer.socket.destroy();
    await (await source.request(kManifest)).closed;
    assert.ok(endless.sent() >= 1000);
  });

  test('serves zeros without a length and lets the client hang up', async (t) => {
    const source = await start(t);
    source.misbehave(kManifest, 'zeros', { announced: false });
    const answer = ask(source.host, kManifest);
    await answer.collected(1000);
    assert.doesNotMatch(answer.head, /content-length/i);
    answer.socket.destroy();
    await (await source.request(kManifest)).closed;
  });
});

describe('A source with TLS', () => {
  /** Requests as a client that trusts the authority; returns the body, or the error's code. */
  function askSecurely(source, path = kManifest) {
    const ca = fs.readFileSync(UpdateSource.certificates().authorityFile);
    return new Promise((resolve) => {
      const request = https.get(source.origin + path, { ca, agent: false }, async (response) => {
        try {
          resolve(Buffer.concat(await response.toArray()));
        } catch (error) {
          resolve(error.code);
        }
      });
      request.on('error', (error) => resolve(error.code));
    });
  }

  test('is trusted through its authority, and names itself with https', async (t) => {
    const source = await start(t, { tls: 'good' });
    const body = await askSecurely(source);
    assert.deepEqual(body, source.contentOf(kManifest));
    assert.match(body.toString(), new RegExp(`<url>https://${source.host}/packages/`));
  });

  for (const protocol of ['TLSv1.1', 'TLSv1.2']) {
    test(`can support ${protocol} alone`, async (t) => {
      const source = await start(t, { tls: 'good', protocol });
      const [host, port] = source.host.split(':');
      const speak = async (options) => {
        const socket = tls.connect({ host, port, rejectUnauthorized: false, ciphers: 'DEFAULT@SECLEVEL=0', ...options });
        t.after(() => socket.destroy());
        await once(socket, 'secureConnect');
        return socket.getProtocol();
      };
      assert.equal(await speak({ minVersion: 'TLSv1', maxVersion: 'TLSv1.3' }), protocol);
      await assert.rejects(speak({ minVersion: 'TLSv1.3', maxVersion: 'TLSv1.3' }), { code: /ALERT_PROTOCOL_VERSION/ });
    });
  }

  for (const [certificate, code] of [
    ['self-signed', 'DEPTH_ZERO_SELF_SIGNED_CERT'],
    ['expired', 'CERT_HAS_EXPIRED'],
    ['wrong-name', 'ERR_TLS_CERT_ALTNAME_INVALID'],
  ]) {
    test(`is refused with a certificate that is ${certificate}`, async (t) => {
      const source = await start(t, { tls: certificate });
      assert.equal(await askSecurely(source), code);
      assert.deepEqual(source.requests, []);
    });
  }

  test('resets an encrypted connection, cuts short in it and redirects to plain HTTP', async (t) => {
    const source = await start(t, { tls: 'good' });
    source.misbehave(kManifest, 'refuse');
    assert.equal(await askSecurely(source), 'ECONNRESET');
    source.misbehave(kManifest, 'cut-short');
    assert.equal(await askSecurely(source), 'ECONNRESET');

    const plain = await start(t);
    source.misbehave(kManifest, 'redirect', { to: plain.origin + kManifest });
    assert.equal((await askSecurely(source)).toString(), 'Moved');
  });

  test('has a registry entry for its authority', () => {
    const entry = UpdateSource.certificates().registryEntry;
    assert.match(entry, /^REGEDIT4\r\n\r\n\[HKEY_CURRENT_USER\\.*\\Root\\Certificates\\[0-9A-F]{40}\]\r\n"Blob"=hex:03,00,00,00,/);
  });
});
