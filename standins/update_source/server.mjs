// server.mjs [--tls CERTIFICATE] [--packages FOLDER] [PATH=MISBEHAVIOUR...]
// The sample update source: serves the manifests in data/ and the packages of the Windows build on
// loopback, prints its host and port as its first line, and runs until it is ended. The class is for
// tests, which can make it misbehave, watch its requests, and serve what they like.
import { EventEmitter, once } from 'node:events';
import fs from 'node:fs';
import http from 'node:http';
import https from 'node:https';
import net from 'node:net';
import path from 'node:path';
import { fileURLToPath } from 'node:url';
import { parseArgs } from 'node:util';
import { Certificates } from './certificates.mjs';
import { windowsBuild } from '../../tools/windows_build.mjs';
import { misbehaviours } from './misbehaviours.mjs';
import { validatedAnswer } from './validated_answer.mjs';

const here = path.dirname(fileURLToPath(import.meta.url));
const root = path.join(here, '../..');
export const kPackageFolder =
  process.env.KITBAY_UPDATE_PACKAGES ?? path.join(windowsBuild, 'standins/update_source/packages');
export const kCertificateFolder = path.join(root, 'build/update_source_certificates');

const kLoopback = '127.0.0.1';
const kTypes = { '.xml': 'text/xml; charset=utf-8', '.zip': 'application/zip' };
const typeOf = (name) => kTypes[path.posix.extname(name)] ?? 'application/octet-stream';

/** Options for a server that supports only that protocol; old protocols must also be permitted. */
const only = (protocol) =>
  protocol ? { minVersion: protocol, maxVersion: protocol, ciphers: 'DEFAULT@SECLEVEL=0' } : {};

/**
 * One update source on its own port. Its requests are kept in `requests`, in order: {method, path,
 * host, headers, closed}, where `closed` settles when the connection has ended, and the answer's
 * {status} if the source validates.
 */
export class UpdateSource {
  requests = [];
  #server;
  #tls;
  #packages;
  #validates;
  #published = new Map();
  #misbehaving = new Map();
  #connections = new Set();
  #ends = new WeakMap();
  #asked = new EventEmitter().setMaxListeners(0);

  /**
   * `tls` is the certificate with which to serve HTTPS ("good", "wrong-name", "expired",
   * "self-signed"); without it the source uses plain HTTP. `protocol` is then the only TLS version
   * that it supports ("TLSv1.1"). `packages` is the folder of the packages. A source that
   * `validates` sends entity tags and dates, and supports requests for what has changed and for the
   * rest of a file.
   */
  static async start({ tls = null, protocol = null, packages = kPackageFolder, validates = false } = {}) {
    const source = new UpdateSource(tls, protocol, packages, validates);
    source.#server.listen(0, kLoopback);
    await once(source.#server, 'listening');
    return source;
  }

  /** Use start(). */
  constructor(tls, protocol, packages, validates) {
    this.#tls = tls;
    this.#validates = validates;
    this.#packages = packages;
    const answer = (request, response) => this.#answer(request, response);
    this.#server = tls
      ? https.createServer({ ...new Certificates(kCertificateFolder).identity(tls), ...only(protocol) }, answer)
      : http.createServer(answer);
    // The server has no time-outs of its own: ending connections is up to the tests.
    Object.assign(this.#server, { keepAliveTimeout: 0, headersTimeout: 0, requestTimeout: 0, timeout: 0 });
    this.#server.on('connection', (connection) => {
      this.#connections.add(connection);
      connection.on('close', () => this.#connections.delete(connection));
      connection.on('error', () => {}); // clients may hang up at any time
    });
  }

  get port() {
    return this.#server.address().port;
  }

  /** "127.0.0.1:PORT". */
  get host() {
    return `${kLoopback}:${this.port}`;
  }

  /** Scheme and host, as at the start of URLs. */
  get origin() {
    return `${this.#tls ? 'https' : 'http'}://${this.host}`;
  }

  /** The same source under another name of the host. */
  get otherOrigin() {
    return this.origin.replace(kLoopback, 'localhost');
  }

  /** The authority that signed this source's certificate. */
  static certificates() {
    return new Certificates(kCertificateFolder);
  }

  /**
   * Serves `content` at `path` in place of what is there; "@ORIGIN@" in a text becomes the origin.
   */
  publish(path, content) {
    this.#published.set(path, content);
  }

  /**
   * Answers requests for `path` wrongly from now on; the ways and their options are those of
   * misbehaviours.mjs. Returns the answer's handle, if it can hold or drip.
   */
  misbehave(path, mode, options) {
    if (!Object.hasOwn(misbehaviours, mode)) throw new Error(`There is no misbehaviour "${mode}"`);
    if (this.contentOf(path) === null) throw new Error(`Nothing is served at ${path}`);
    const misbehaviour = misbehaviours[mode](options);
    this.#misbehaving.set(path, misbehaviour);
    return misbehaviour;
  }

  /** Ends the misbehaviour at `path`, or all of it. */
  behave(path = null) {
    if (path === null) this.#misbehaving.clear();
    else this.#misbehaving.delete(path);
  }

  /** The `count`th request for `path`, as soon as it has arrived. */
  async request(path, count = 1) {
    for (;;) {
      const found = this.requests.filter((request) => request.path === path)[count - 1];
      if (found) return found;
      await once(this.#asked, 'request');
    }
  }

  /** What an honest source serves at a path; null if there is nothing. */
  contentOf(pathAsked) {
    let content = this.#published.get(pathAsked) ?? this.#fileContent(pathAsked);
    if (content === null) return null;
    if (typeOf(pathAsked) === kTypes['.xml']) content = content.toString().replaceAll('@ORIGIN@', this.origin);
    return Buffer.from(content);
  }

  /**
   * A loopback port that refuses connections, as {host, release()}. It is in use, as the near end
   * of a connection to this source, so nobody can start to listen there.
   */
  async closedPort() {
    const connection = net.connect(this.port, kLoopback);
    await once(connection, 'connect');
    return { host: `${kLoopback}:${connection.localPort}`, release: () => connection.destroy() };
  }

  async close() {
    const ended = once(this.#server, 'close');
    this.#server.close();
    for (const connection of this.#connections) connection.destroy();
    await ended;
  }

  #fileContent(pathAsked) {
    const [, manifest] = /^\/([\w-]+\.xml)$/.exec(pathAsked) ?? [];
    const [, archive] = /^\/packages\/([\w-]+\.zip)$/.exec(pathAsked) ?? [];
    const file = manifest ? path.join(here, 'data', manifest) : archive && path.join(this.#packages, archive);
    return file && fs.existsSync(file) ? fs.readFileSync(file) : null;
  }

  #answer(request, response) {
    const { socket, method, headers } = request;
    const [pathAsked] = request.url.split('?');
    this.requests.push({ method, path: pathAsked, host: headers.host, headers, closed: this.#endOf(socket) });
    this.#asked.emit('request');

    const content = this.contentOf(pathAsked);
    const type = typeOf(pathAsked);
    const misbehaviour = this.#misbehaving.get(pathAsked);
    if (misbehaviour) {
      const reset = () => this.#reset(socket);
      const exchange = { type, content, socket, reset, origin: this.origin, path: pathAsked, headers };
      this.#answerWrongly(misbehaviour, exchange);
    } else if (content === null) {
      response.writeHead(404, { 'Content-Type': 'text/plain' }).end('Nothing here');
    } else if (this.#validates) {
      const { status, fields, body } = validatedAnswer(headers, content);
      this.requests.at(-1).status = status;
      response.writeHead(status, { 'Content-Type': type, ...fields }).end(body);
    } else {
      response.writeHead(200, { 'Content-Type': type, 'Content-Length': content.length }).end(content);
    }
  }

  #endOf(socket) {
    const end = this.#ends.get(socket) ?? new Promise((resolve) => socket.once('close', () => resolve()));
    this.#ends.set(socket, end);
    return end;
  }

  async #answerWrongly(misbehaviour, exchange) {
    try {
      await misbehaviour.answer(exchange);
    } catch (error) {
      if (!exchange.socket.destroyed) throw error; // clients may hang up in the middle
    }
  }

  /** Resets the connection below the socket, which may be encrypted. */
  #reset(socket) {
    for (const connection of this.#connections) {
      if (connection.remotePort === socket.remotePort) connection.resetAndDestroy();
    }
  }
}

async function main() {
  const { values, positionals } = parseArgs({
    allowPositionals: true,
    options: { tls: { type: 'string' }, packages: { type: 'string' } },
  });
  const source = await UpdateSource.start(values);
  for (const word of positionals) source.misbehave(...word.split('=', 2));
  console.log(source.host);
}

if (process.argv[1] === fileURLToPath(import.meta.url)) await main();
