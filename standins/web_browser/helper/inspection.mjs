import crypto from 'node:crypto';
import fs from 'node:fs';
import net from 'node:net';
import { DevToolsError } from './devtools_pipe.mjs';
import { LineConnection } from './wire.mjs';

const kWhereaboutsLimitMs = 2000;
const kSettleLimitMs = 10000;

/** Resolves when `holds` does, looked at again at each of the emitter's events; rejects in time. */
function until(emitter, events, holds, limitMs, what) {
  if (holds()) return Promise.resolve();
  return new Promise((resolve, reject) => {
    const check = () => holds() && finish(resolve);
    const limit = setTimeout(() => finish(() => reject(new Error(`Not in time: ${what}`))), limitMs);
    function finish(settle) {
      clearTimeout(limit);
      for (const event of events) emitter.off(event, check);
      settle();
    }
    for (const event of events) emitter.on(event, check);
  });
}

/** The door through which end-to-end tests look at the page; on loopback, with a token. */
export class Inspection {
  #page;
  #frames;
  #session;
  #server;
  #token = crypto.randomBytes(16).toString('hex');

  constructor({ page, frames, session }) {
    this.#page = page;
    this.#frames = frames;
    this.#session = session;
  }

  /** Listens and writes {port, token} to a file, whole. */
  async open(file) {
    this.#server = net.createServer((socket) => this.#serve(new LineConnection(socket)));
    await new Promise((resolve) => this.#server.listen(0, '127.0.0.1', resolve));
    const text = JSON.stringify({ port: this.#server.address().port, token: this.#token });
    fs.writeFileSync(`${file}.part`, text);
    fs.renameSync(`${file}.part`, file);
  }

  #serve(connection) {
    connection.on('message', async (request) => {
      if (request.token !== this.#token) {
        connection.close();
        return;
      }
      try {
        const value = await this.#answer(request);
        connection.send({ id: request.id, value: value ?? null });
      } catch (error) {
        connection.send({ id: request.id, error: String(error.message) });
      }
    });
  }

  #answer(request) {
    switch (request.op) {
      case 'eval': return this.#page.evaluate(`(${request.expression})`);
      case 'rect': return this.#rect(request);
      case 'waitFor': return this.#waitFor(request);
      case 'requests': return this.#page.requests;
      case 'screenshot': return this.#screenshot();
      case 'settled': return this.#settled();
      default: throw new Error(`Unknown operation ${request.op}`);
    }
  }

  async #rect({ selector, index = 0 }) {
    const rect = await this.#page.evaluate(`(() => {
      const element = document.querySelectorAll(${JSON.stringify(selector)})[${Number(index)}];
      if (!element) throw new Error('No element ' + ${JSON.stringify(`${selector} [${index}]`)});
      const { x, y, width, height } = element.getBoundingClientRect();
      return { x, y, width, height };
    })()`);
    return { ...rect, origin: await this.#origin() };
  }

  /** The screen position of the page's top left corner; null where the host does not say. */
  #origin() {
    return new Promise((resolve) => {
      const limit = setTimeout(() => resolve(null), kWhereaboutsLimitMs);
      this.#session.once('whereabouts', ({ x, y, w, h }) => {
        clearTimeout(limit);
        resolve({ x, y, width: w, height: h });
      });
      this.#session.askWhereabouts();
    });
  }

  /** A new document ends the wait on the old one; it goes on there with the time that is left. */
  async #waitFor({ expression, timeoutMs = 10000 }) {
    const deadline = Date.now() + timeoutMs;
    for (;;) {
      const generation = this.#page.generation;
      const left = Math.max(0, deadline - Date.now());
      try {
        const value = await this.#page.evaluate(`standin.waitUntil(() => (${expression}), ${left})`);
        if (value !== undefined) return value;
        throw new Error(`Not in time: ${expression}`);
      } catch (error) {
        if (!(error instanceof DevToolsError)) throw error;
        await until(this.#page, ['document'], () => this.#page.generation !== generation, left,
          expression);
      }
    }
  }

  async #screenshot() {
    const { data } = await this.#page.send('Page.captureScreenshot', { format: 'png' });
    return data;
  }

  /** Resolves when the host has dealt with all events and its window shows the page as it is. */
  async #settled() {
    await until(this.#session, ['handled'], () => !this.#session.hasUnhandledEvents, kSettleLimitMs,
      'the host deals with the page\'s events');
    await this.#page.evaluate('standin.drawn()');
    const fresh = this.#frames.next();
    await this.#frames.restart();
    const number = await fresh;
    await until(this.#session, ['painted'], () => this.#session.lastPainted >= number, kSettleLimitMs,
      'the host paints the page');
    return true;
  }
}
