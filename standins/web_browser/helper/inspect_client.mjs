import fs from 'node:fs';
import net from 'node:net';
import path from 'node:path';
import { once } from 'node:events';
import { LineConnection } from './wire.mjs';

/** Resolves with the content of a file as soon as it is there. */
async function appearing(file, timeoutMs) {
  const limit = AbortSignal.timeout(timeoutMs);
  const watcher = fs.watch(path.dirname(file));
  try {
    while (!fs.existsSync(file)) await once(watcher, 'change', { signal: limit });
    return fs.readFileSync(file, 'utf8');
  } finally {
    watcher.close();
  }
}

/**
 * A look at the page of a running host that was started with WEB_BROWSER_STANDIN_INSPECT set to
 * the name of a file that does not exist yet. Every question rejects with the page's own words
 * where it fails.
 */
export class PageInspector {
  #connection;
  #token;
  #lastId = 0;
  #waiting = new Map();

  /** Waits for the host to name its port in `file`, then connects. */
  static async connect(file, timeoutMs = 30000) {
    const { port, token } = JSON.parse(await appearing(file, timeoutMs));
    const socket = net.connect(port, '127.0.0.1');
    await once(socket, 'connect');
    return new PageInspector(new LineConnection(socket), token);
  }

  constructor(connection, token) {
    this.#connection = connection;
    this.#token = token;
    connection.on('message', ({ id, value, error }) => {
      const { resolve, reject } = this.#waiting.get(id);
      this.#waiting.delete(id);
      if (error === undefined) resolve(value);
      else reject(new Error(error));
    });
    connection.on('end', () => {
      for (const { reject } of this.#waiting.values()) reject(new Error('The host has ended'));
      this.#waiting.clear();
    });
  }

  /** The JSON value of an expression, evaluated beside the page (page scripts do not see it). */
  eval(expression) {
    return this.#ask('eval', { expression });
  }

  /** {x, y, width, height, origin}: an element in page pixels, and the page's corner on the screen. */
  rect(selector, index = 0) {
    return this.#ask('rect', { selector, index });
  }

  /** The middle of an element in screen pixels. */
  async middle(selector, index = 0) {
    const { x, y, width, height, origin } = await this.rect(selector, index);
    if (origin === null) throw new Error('The host does not say where its window is');
    return { x: Math.round(origin.x + x + width / 2), y: Math.round(origin.y + y + height / 2) };
  }

  /** The first true value of an expression; survives navigations. */
  waitFor(expression, timeoutMs = 10000) {
    return this.#ask('waitFor', { expression, timeoutMs });
  }

  /** Every URL that the page asked for: {url, refused, reason}. */
  requests() {
    return this.#ask('requests');
  }

  /** The page as a PNG, in a Buffer. */
  async screenshot() {
    return Buffer.from(await this.#ask('screenshot'), 'base64');
  }

  /** Resolves when the host has dealt with all page events and shows the page as it is. */
  settled() {
    return this.#ask('settled');
  }

  close() {
    this.#connection.close();
  }

  #ask(op, details = {}) {
    return new Promise((resolve, reject) => {
      const id = ++this.#lastId;
      this.#waiting.set(id, { resolve, reject });
      this.#connection.send({ token: this.#token, id, op, ...details });
    });
  }
}
