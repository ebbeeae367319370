import fs from 'node:fs';
import net from 'node:net';
import path from 'node:path';
import { once } from 'node:events';
import { LineConnection } from './wire.mjs';

/** Resolves with the content of a file as soon as it exists. */
async function appearing(file, signal) {
  const watcher = fs.watch(path.dirname(file), { persistent: false });
  try {
    while (!fs.existsSync(file)) await once(watcher, 'change', { signal });
    return fs.readFileSync(file, 'utf8');
  } finally {
    watcher.close();
  }
}

const kLimitMs = 120000;

/**
 * Inspects the page of a running host that was started with WEB_BROWSER_STANDIN_INSPECT set to the
 * name of a file that does not exist yet. Every question is answered with the state of the page
 * while the host waits for messages, never in the middle of its work. A question rejects with the
 * page's own message if it fails, and with "Not in time" if there is no answer within the limit.
 */
export class PageInspector {
  #connection;
  #token;
  #limit;
  #lastId = 0;
  #hasEnded = false;
  #waiting = new Map();

  /**
   * Waits for the host to write its port to `file`, then connects. `limit` returns how many
   * milliseconds the next question may take.
   */
  static async connect(file, limit = () => kLimitMs) {
    const text = await appearing(file, AbortSignal.timeout(limit())).catch((error) => {
      throw error.name === 'AbortError' ? new Error('Not in time: the page of a host') : error;
    });
    const { port, token } = JSON.parse(text);
    const socket = net.connect(port, '127.0.0.1');
    await once(socket, 'connect');
    return new PageInspector(new LineConnection(socket), token, limit);
  }

  constructor(connection, token, limit) {
    this.#connection = connection;
    this.#token = token;
    this.#limit = limit;
    connection.on('message', ({ id, value, error }) => {
      // The caller may have given up by now.
      const { resolve, reject } = this.#waiting.get(id) ?? { resolve() {}, reject() {} };
      if (error === undefined) resolve(value);
      else reject(new Error(error));
    });
    connection.on('end', () => {
      this.#hasEnded = true;
      for (const { reject } of this.#waiting.values()) reject(new Error('The host has ended'));
    });
  }

  /** The JSON value of an expression, evaluated beside the page (invisible to page scripts). */
  eval(expression) {
    return this.#ask('eval', { expression });
  }

  /**
   * {x, y, width, height, origin}: an element's rectangle in screen pixels, relative to the page's
   * corner at `origin`.
   */
  rect(selector, index = 0) {
    return this.#ask('rect', { selector, index });
  }

  /** The middle of an element in screen pixels. */
  async middle(selector, index = 0) {
    const { x, y, width, height, origin } = await this.rect(selector, index);
    return { x: Math.round(origin.x + x + width / 2), y: Math.round(origin.y + y + height / 2) };
  }

  /** The first true value of an expression; continues across navigations. */
  waitFor(expression) {
    return this.#ask('waitFor', { expression });
  }

  /** Every URL that the page requested: {url, refused, reason}. */
  requests() {
    return this.#ask('requests');
  }

  /** The late-bound calls that the host has made so far: {total, members: {name: number}}. */
  calls() {
    return this.#ask('calls');
  }

  /**
   * What the browser reports about the page to a screen reader, in the page's order: {role, name,
   * properties}, with "expanded", "selected", "pressed", "disabled" and "focused" among the
   * properties.
   */
  accessibility() {
    return this.#ask('accessibility');
  }

  /** The page as a PNG, in a Buffer. */
  async screenshot() {
    return Buffer.from(await this.#ask('screenshot'), 'base64');
  }

  /** Resolves when the host has handled all page events and shows the current state of the page. */
  settled() {
    return this.#ask('settled');
  }

  /**
   * How much of the user's input the page has handled: {releases, keys}, buttons and keys released.
   */
  taken() {
    return this.#ask('taken');
  }

  /** Resolves when the page has handled that much input in total. */
  hasTaken(count) {
    return this.#ask('taken', count);
  }

  close() {
    this.#connection.close();
  }

  async #ask(op, details = {}) {
    if (this.#hasEnded) throw new Error('The host has ended');
    const id = ++this.#lastId;
    const what = details.expression ?? details.selector ?? op;
    let limit;
    try {
      return await new Promise((resolve, reject) => {
        this.#waiting.set(id, { resolve, reject });
        this.#connection.send({ token: this.#token, id, op, ...details });
        limit = setTimeout(() => reject(new Error(`Not in time: ${what}`)), this.#limit());
      });
    } finally {
      clearTimeout(limit);
      this.#waiting.delete(id);
    }
  }
}
