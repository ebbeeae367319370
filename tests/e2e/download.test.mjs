// The suite's download object, with a source that misbehaves in every way.
import assert from 'node:assert/strict';
import { once } from 'node:events';
import fs from 'node:fs';
import http from 'node:http';
import path from 'node:path';
import { setTimeout as delay } from 'node:timers/promises';
import { afterEach, before, beforeEach, describe } from 'node:test';
import { UpdateSource } from '../../standins/update_source/server.mjs';
import {
  arrived, completed, download, exception, files, folder, message, set, stored, test, unset,
} from './downloads.mjs';
import { trustAuthority, wine } from './harness.mjs';

const kManifest = '/ovalink.xml';
const kLarge = '/large.zip';
const kBurst = 1024 * 1024;
const kTimeOutSeconds = 2;
// Agreeing on a secure connection has the same limit as silence, and takes a busy machine seconds.
const kSecureTimeOutSeconds = 20;
let source;

/** What the client is told when it requests a path from the source. */
const ask = (path = kManifest, options) => download([{ server: source.host, path }], options);

/** A test whose transfers time out soon. */
const impatiently = (body, seconds = kTimeOutSeconds) => async (t) => {
  await set('TransferTimeout', String(seconds));
  try {
    await body(t);
  } finally {
    await unset('TransferTimeout');
  }
};

beforeEach(async () => {
  source = await UpdateSource.start();
});
afterEach(() => source.close());

describe('A file', () => {
  test('arrives whole, under its own name only', async () => {
    const content = source.contentOf(kManifest);
    assert.deepEqual(await ask(), arrived(kManifest, content));
    assert.deepEqual(stored(), content);
    assert.deepEqual(files(), ['file.xml']);
  });

  test('is requested without cookies or names, once', async () => {
    await ask();
    const [{ method, headers }, ...more] = source.requests;
    assert.deepEqual(more, []);
    assert.equal(method, 'GET');
    assert.deepEqual(headers, {
      'accept-encoding': 'identity', connection: 'Keep-Alive', 'user-agent': 'Kitbay', host: source.host,
    });
  });

  test('replaces an older one', async () => {
    fs.writeFileSync(path.join(folder, 'file.xml'), 'older, and longer'.repeat(1000));
    await ask();
    assert.deepEqual(stored(), source.contentOf(kManifest));
    assert.deepEqual(files(), ['file.xml']);
  });

  test('replaces one that another program holds for a moment', async () => {
    fs.writeFileSync(path.join(folder, 'file.xml'), 'older');
    const content = source.contentOf(kManifest);
    assert.deepEqual(await ask(kManifest, { held: 3 }), [...arrived(kManifest, content), { event: 'Attempts', count: 4 }]);
    assert.deepEqual(stored(), content);
    assert.deepEqual(files(), ['file.xml']);
  });

  test('leaves unchanged one that stays held', async () => {
    fs.writeFileSync(path.join(folder, 'file.xml'), 'older');
    const [, ...events] = await ask(kManifest, { held: 99 });
    assert.deepEqual(events, [
      exception(kManifest, 'The file could not be written: Permission denied'),
      { event: 'Attempts', count: 11 },
    ]);
    assert.equal(String(stored()), 'older');
    assert.deepEqual(files(), ['file.xml']);
  });

  test('of no bytes arrives as well', async () => {
    source.misbehave(kManifest, 'empty');
    assert.deepEqual(await ask(), arrived(kManifest, ''));
    assert.equal(stored().length, 0);
  });

  test('of 100 MB arrives with growing progress', async () => {
    source.publish(kLarge, '');
    source.misbehave(kLarge, 'zeros');
    const start = Date.now();
    const events = await download([{ server: source.host, path: kLarge, destination: 'C:\\downloads\\file.zip' }]);
    const lasted = Date.now() - start;
    const bytes = 100 * 1024 * 1024;
    assert.deepEqual(events.shift(), message(kLarge, 'Total-Length', bytes));
    assert.deepEqual(events.pop(), completed(kLarge));
    let last = 0;
    for (const { field, value } of events) {
      assert.equal(field, 'Received');
      assert.ok(Number(value) > last && Number(value) < bytes, value);
      last = Number(value);
    }
    // Not more often than a person can see.
    assert.ok(events.length >= 1 && events.length <= lasted / 100, `${events.length} in ${lasted} ms`);
    assert.equal(fs.statSync(path.join(folder, 'file.zip')).size, bytes);
  });

  test('that drips reports its progress', async () => {
    source.publish('/five.xml', 'abcde');
    const drip = source.misbehave('/five.xml', 'drip');
    const asking = ask('/five.xml', {
      // A byte that follows the previous one at once does not cause a message, so each waits until
      // it does.
      onEvent: ({ field, value }) => {
        if (field === 'Total-Length' || field === 'Received') setTimeout(() => drip.next(), 150);
      },
    });
    const counts = [1, 2, 3, 4].map((count) => message('/five.xml', 'Received', count));
    assert.deepEqual(await asking, [
      message('/five.xml', 'Total-Length', 5), ...counts, completed('/five.xml'),
    ]);
    assert.equal(stored().toString(), 'abcde');
  });

  // Reads that have become large either wait for everything they requested or do not. That varies
  // from transfer to transfer, so there are three.
  test('that flows, however slowly after a fast start, outlasts the time-out', impatiently(async () => {
    const flowOne = async (name) => {
      const path = `/${name}.zip`;
      source.publish(path, Buffer.alloc(kBurst + 40 * 1024, 'x'));
      const flow = source.misbehave(path, 'drip');
      const asking = download([{ server: source.host, path, destination: `C:\\downloads\\${name}` }]);
      await flow.reached;
      while (flow.sent < kBurst) {
        await flow.next(16 * 1024);
        await delay(5);
      }
      const start = Date.now();
      while (!(await flow.next(1024))) await delay(100);
      assert.ok(Date.now() - start > 1.5 * kTimeOutSeconds * 1000);
      assert.deepEqual((await asking).at(-1), completed(path));
      assert.deepEqual(stored(name), source.contentOf(path));
    };
    await Promise.all(['one', 'two', 'three'].map(flowOne));
  }));

  for (const mode of ['chunked', 'no-length']) {
    test(`without an announced length (${mode}) arrives without progress`, async () => {
      source.misbehave(kManifest, mode);
      assert.deepEqual(await ask(), [completed(kManifest)]);
      assert.deepEqual(stored(), source.contentOf(kManifest));
    });
  }

  test('arrives as the server sends it, even if it is a login page', async () => {
    source.misbehave(kManifest, 'login-page');
    const [total, last] = await ask();
    assert.match(stored().toString(), /type="password"/);
    assert.deepEqual([total, last], arrived(kManifest, stored()));
  });

  test('after another waits for its turn', async () => {
    const stall = source.misbehave(kManifest, 'stall');
    const asking = download([
      { server: source.host, path: kManifest },
      { server: source.host, path: '/none.xml', destination: 'C:\\downloads\\none.xml' },
      { server: source.host, path: '/partners.xml', destination: 'C:\\downloads\\partners.xml' },
    ]);
    await stall.reached;
    assert.deepEqual(source.requests.map((request) => request.path), [kManifest]);
    await stall.rest();
    assert.deepEqual(await asking, [
      ...arrived(kManifest, source.contentOf(kManifest)),
      exception('/none.xml', 'The server answered 404 (Not Found)'),
      ...arrived('/partners.xml', source.contentOf('/partners.xml')),
    ]);
    assert.deepEqual(files(), ['file.xml', 'partners.xml']);
  });

  test('is reported under the path as it was written', async () => {
    const written = `//${source.host}/ovalink.xml?for=you & me`;
    const events = await download([{ server: 'http:', path: written }]);
    assert.deepEqual(events, arrived(written, source.contentOf(kManifest)));
  });
});

describe('A source that fails', () => {
  /** One exception, no file, and an older file unchanged. */
  async function fails(text, asking = ask()) {
    const events = await asking;
    assert.deepEqual(events.filter(({ event }) => event === 'Exception'), [events.at(-1)]);
    assert.deepEqual(events.at(-1), exception(events.at(-1).path, text));
    assert.deepEqual(files(), []);
    return events;
  }

  test('by refusing the connection', async (t) => {
    const port = await source.closedPort();
    t.after(port.release);
    await fails('The server could not be reached', download([{ server: port.host, path: kManifest }]));
  });

  test('by having no name', async () => {
    const asking = download([{ server: 'updates.invalid', path: kManifest }]);
    await fails('The server could not be found', asking);
  });

  test('by breaking the connection off', async () => {
    source.misbehave(kManifest, 'refuse');
    await fails('The server gave no whole answer');
  });

  test('by silence before the answer', impatiently(async () => {
    source.misbehave(kManifest, 'stall');
    await fails('connection timed out');
  }));

  test('by silence in the answer', impatiently(async () => {
    source.misbehave(kManifest, 'stall-body', { after: 33 });
    const events = await fails('connection timed out');
    assert.equal(events[0].field, 'Total-Length');
  }));

  for (const tls of [null, 'good']) {
    test(`by silence after a fast start${tls ? ' over TLS' : ''}`, impatiently(async (t) => {
      if (tls) await trustAuthority();
      const other = await UpdateSource.start({ tls });
      t.after(() => other.close());
      other.publish(kLarge, Buffer.alloc(2 * kBurst, 'x'));
      other.misbehave(kLarge, 'stall-body', { after: kBurst });
      const server = tls ? 'https:' : 'http:';
      const events = await fails('connection timed out', download([{ server, path: `//${other.host}${kLarge}` }]));
      assert.equal(events[0].field, 'Total-Length');
    }, tls ? kSecureTimeOutSeconds : kTimeOutSeconds));
  }

  test('by cutting the answer short', async () => {
    source.misbehave(kManifest, 'cut-short', { after: 100 });
    const { length } = source.contentOf(kManifest);
    await fails(`The answer was cut short: 100 of ${length} bytes`);
  });

  test('by breaking the connection off in the answer', async () => {
    const stall = source.misbehave(kManifest, 'stall-body', { after: 100 });
    // What arrives with the end of the connection may be lost, so the client must have the header
    // first.
    const events = await ask(kManifest, { onEvent: ({ event }) => event === 'Message' && stall.breakOff() });
    assert.match(events.at(-1).message, /^The answer was cut short: \d+ of \d+ bytes$/);
    assert.deepEqual(files(), []);
  });

  test('by cutting the chunks short', async () => {
    source.misbehave(kManifest, 'chunked-cut-short');
    // Wine takes the end of the connection for the end of the chunks. How Windows handles it is
    // covered by the outcomes in the contract tests.
    const content = source.contentOf(kManifest);
    assert.deepEqual(await ask(), [completed(kManifest)]);
    assert.deepEqual(stored(), content.subarray(0, content.length >> 1));
  });

  for (const [status, words] of [[401, 'Unauthorized'], [404, 'Not Found'], [500, 'Internal Server Error']]) {
    test(`by answering ${status}`, async () => {
      source.misbehave(kManifest, String(status));
      await fails(`The server answered ${status} (${words})`);
      assert.equal(source.requests.length, 1);
    });
  }

  test('leaves an older file unchanged', async () => {
    fs.writeFileSync(path.join(folder, 'file.xml'), 'older');
    source.misbehave(kManifest, 'cut-short', { after: 100 });
    await ask();
    assert.equal(stored().toString(), 'older');
    assert.deepEqual(files(), ['file.xml']);
  });

  test('by sending more than it announced', async () => {
    source.publish('/few.xml', 'abcdefgh');
    source.misbehave('/few.xml', 'too-much', { announced: 5, extra: 0 });
    await fails('The server sent more than the 5 bytes it announced', ask('/few.xml'));
  });

  test('by sending more than it announced, later, delivers what it announced', async () => {
    source.publish('/few.xml', 'abcdefgh');
    source.misbehave('/few.xml', 'too-much-later', { announced: 5 });
    assert.deepEqual(await ask('/few.xml'), arrived('/few.xml', 'abcde'));
    assert.equal(stored().toString(), 'abcde');
  });
});

describe('A destination', () => {
  for (const [what, where] of [
    ['in a missing folder', 'C:\\missing\\file.xml'],
    ['that is a folder', 'C:\\windows'],
    ['that is relative', 'downloads\\file.xml'],
    ['without a drive', '\\downloads\\file.xml'],
    ['on another computer', '\\\\127.0.0.1\\share\\file.xml'],
    ['without a name', ''],
  ]) {
    test(`${what} is refused`, async () => {
      const [...events] = await download([{ server: source.host, path: kManifest, destination: where }]);
      assert.match(events.at(-1).message, /^The file could not be written: /);
      assert.deepEqual(files(), []);
    });
  }
});

describe('A redirection', () => {
  test('within the host is followed', async () => {
    source.misbehave(kManifest, 'redirect', { to: '/partners.xml' });
    assert.deepEqual(await ask(), arrived(kManifest, source.contentOf('/partners.xml')));
    assert.deepEqual(stored(), source.contentOf('/partners.xml'));
  });

  test('away from the host is not', async () => {
    source.misbehave(kManifest, 'redirect', { to: `${source.otherOrigin}/partners.xml` });
    assert.deepEqual(await ask(), [
      exception(kManifest, 'The server sent the request on to http://localhost, which is not allowed'),
    ]);
    assert.equal(source.requests.length, 1);
  });

  test('in a circle ends after ten', async () => {
    source.misbehave(kManifest, 'redirect-loop');
    assert.deepEqual(await ask(), [exception(kManifest, 'The server sent the request on too often')]);
    assert.equal(source.requests.length, 11);
  });
});

describe('A secure source', () => {
  let secure;
  const askSecurely = (path = kManifest) =>
    download([{ server: 'https:', path: `//${secure.host}${path}` }]);

  before(trustAuthority);

  const start = async (t, tls, protocol) => {
    secure = await UpdateSource.start({ tls, protocol });
    t.after(() => secure.close());
  };

  test('with a good certificate delivers', async (t) => {
    await start(t, 'good');
    const [total, last] = await askSecurely();
    assert.equal(total.value, String(secure.contentOf(kManifest).length));
    assert.equal(last.value, 'true');
    assert.deepEqual(stored(), secure.contentOf(kManifest));
  });

  test('that supports TLS 1.2 delivers', async (t) => {
    await start(t, 'good', 'TLSv1.2');
    assert.equal((await askSecurely()).at(-1).value, 'true');
  });

  test('that supports nothing newer than TLS 1.1 gets no request', async (t) => {
    await start(t, 'good', 'TLSv1.1');
    const [event, ...more] = await askSecurely();
    assert.deepEqual(more, []);
    assert.equal(event.event, 'Exception');
    assert.deepEqual(secure.requests, []);
  });

  // Wine does not report what is wrong with a certificate. What Windows reports is covered by the
  // outcomes in the contract tests.
  for (const tls of ['wrong-name', 'expired', 'self-signed']) {
    test(`with a certificate that is ${tls} gets no request`, async (t) => {
      await start(t, tls);
      const text = 'No secure connection to the server could be made; its certificate may not be valid';
      assert.deepEqual(await askSecurely(), [exception(`//${secure.host}${kManifest}`, text)]);
      assert.deepEqual(secure.requests, []);
      assert.deepEqual(files(), []);
    });
  }

  test('may redirect to another one, but not to plain HTTP', async (t) => {
    await start(t, 'good');
    secure.misbehave(kManifest, 'redirect', { to: `${secure.otherOrigin}/partners.xml` });
    await askSecurely();
    assert.deepEqual(stored(), secure.contentOf('/partners.xml'));

    secure.misbehave(kManifest, 'redirect', { to: source.origin + kManifest });
    const [event] = await askSecurely();
    assert.equal(event.message, 'The server sent the request on to http://127.0.0.1, which is not allowed');
    assert.deepEqual(source.requests, []);
  });
});

describe('Plain HTTP to a name other than loopback', () => {
  // A short form of 127.0.0.1 whose characters do not make it a loopback address.
  const elsewhere = () => source.host.replace('127.0.0.1', '127.1');

  test('is refused unless the user lists the server', async () => {
    const path = `//${elsewhere()}${kManifest}`;
    const ask = () => download([{ server: 'http:', path }]);
    assert.deepEqual(await ask(), [exception(path, 'Plain HTTP is not allowed for the server 127.1')]);
    assert.deepEqual(source.requests, []);

    await set('PlainHttpServers', `other.example;${elsewhere()}`);
    try {
      assert.deepEqual(await ask(), arrived(path, source.contentOf(kManifest)));
    } finally {
      await unset('PlainHttpServers');
    }
  });

  test('is not used for a server without a scheme', async () => {
    const [event] = await download([{ server: elsewhere(), path: kManifest }]);
    assert.equal(event.event, 'Exception');
    assert.deepEqual(source.requests, []);
  });
});

describe('The proxy of the user', () => {
  const kConnections = 'HKCU\\Software\\Microsoft\\Windows\\CurrentVersion\\Internet Settings\\Connections';
  const kName = 'DefaultConnectionSettings';
  const kNoHost = 'updates.invalid';
  let proxy;
  let asked;

  /** What the system's dialog of Internet settings writes for nothing but a proxy. */
  function settingsFor(host) {
    const number = (value) => Buffer.from(Uint32Array.of(value).buffer);
    const text = (value) => [number(value.length), Buffer.from(value)];
    const kVersion = 0x46;
    const kDirectOrProxy = 3;
    const parts = [number(kVersion), number(1), number(kDirectOrProxy), ...text(host), ...text(''), ...text('')];
    return Buffer.concat([...parts, Buffer.alloc(32)]).toString('hex');
  }

  beforeEach(async () => {
    asked = [];
    proxy = http.createServer((request, response) => {
      asked.push(request.url);
      response.writeHead(200, { 'Content-Length': 5 }).end('proxy');
    });
    proxy.listen(0, '127.0.0.1');
    await once(proxy, 'listening');
    const data = settingsFor(`127.0.0.1:${proxy.address().port}`);
    await wine('reg', 'add', kConnections, '/v', kName, '/t', 'REG_BINARY', '/d', data, '/f');
    await set('PlainHttpServers', kNoHost);
  });
  afterEach(async () => {
    await wine('reg', 'delete', kConnections, '/v', kName, '/f');
    await unset('PlainHttpServers');
    proxy.close();
  });

  test('is contacted instead of a server', async () => {
    assert.deepEqual(await download([{ server: kNoHost, path: kManifest }]), arrived(kManifest, 'proxy'));
    assert.deepEqual(asked.map((url) => new URL(url).href), [`http://${kNoHost}${kManifest}`]);
    assert.equal(stored().toString(), 'proxy');
  });

  test('is not contacted instead of loopback', async () => {
    assert.deepEqual(await ask(), arrived(kManifest, source.contentOf(kManifest)));
    assert.deepEqual(asked, []);
  });
});

describe('A client that gives up', () => {
  for (const ending of ['shut-down', 'let-go']) {
    test(`and says so by ${ending} gets no file, no events and no thread`, async () => {
      source.misbehave(kManifest, 'stall-body', { after: 33 });
      const events = await download(
        [kManifest, '/partners.xml'].map((path) => ({ server: source.host, path })),
        { ending },
      );
      const ended = events.pop();
      const { before } = ended;
      assert.deepEqual(ended, { event: 'Ended', before, during: before + 1, after: before });
      assert.equal(events.length, 1);
      assert.deepEqual(files(), []);
      assert.deepEqual(source.requests.map(({ path }) => path), [kManifest]);
      await (await source.request(kManifest)).closed;
    });
  }

  test('may use the same object again', async () => {
    source.misbehave(kManifest, 'stall-body', { after: 33 });
    const events = await download(
      [kManifest, '/partners.xml'].map((path) => ({ server: source.host, path })),
      { ending: 'again' },
    );
    assert.deepEqual(events.slice(2), arrived('/partners.xml', source.contentOf('/partners.xml')));
    assert.deepEqual(files(), ['file.xml']);
  });
});
