import crypto from 'node:crypto';
import fs from 'node:fs';
import net from 'node:net';
import { once } from 'node:events';
import { DevToolsError } from './devtools_pipe.mjs';
import { accessibleNodes } from './accessibility.mjs';
import { LineConnection } from './wire.mjs';

/** Resolves when `holds` is true; checks again at each of the emitter's events. */
function until(emitter, event, holds) {
  if (holds()) return Promise.resolve();
  return new Promise((resolve) => {
    const check = () => {
      if (!holds()) return;
      emitter.off(event, check);
      resolve();
    };
    emitter.on(event, check);
  });
}

/**
 * The interface through which end-to-end tests inspect the page; on loopback, with a token. The
 * caller decides how long to wait for an answer.
 */
export class Inspection {
  #page;
  #frames;
  #session;
  #input;
  #server;
  #token = crypto.randomBytes(16).toString('hex');

  constructor({ page, frames, session, input }) {
    this.#page = page;
    this.#frames = frames;
    this.#session = session;
    this.#input = input;
  }

  /** Listens, and writes {port, token} to a file in one piece. */
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
      case 'eval': return this.#read(request.expression);
      case 'rect': return this.#rect(request);
      case 'waitFor': return this.#waitFor(request);
      case 'requests': return this.#page.requests;
      case 'calls': return this.#session.calls;
      case 'accessibility': return accessibleNodes(this.#page);
      case 'screenshot': return this.#frames.picture();
      case 'settled': return this.#settled();
      case 'taken': return this.#taken(request);
      default: throw new Error(`Unknown operation ${request.op}`);
    }
  }

  /**
   * The value of an expression while the host waits for messages: it has painted, which the system makes it
   * do only when no message is left, and makes no call until the value has been read.
   */
  async #read(expression) {
    for (;;) {
      const callCount = await this.#painted(this.#frames.again());
      const value = await this.#page.evaluate(`(${expression})`);
      if (this.#session.callCount === callCount) return value;
    }
  }

  /** Resolves when the host has painted a picture, with the number of calls that it had made by then. */
  async #painted(number) {
    await until(this.#session, 'painted', () => this.#session.lastPainted.number >= number);
    return this.#session.lastPainted.callCount;
  }

  async #rect({ selector, index = 0 }) {
    const rect = await this.#read(`(() => {
      const element = document.querySelectorAll(${JSON.stringify(selector)})[${Number(index)}];
      if (!element) throw new Error('No element ' + ${JSON.stringify(`${selector} [${index}]`)});
      const { x, y, width, height } = element.getBoundingClientRect();
      return { x, y, width, height };
    })()`);
    const { zoom } = this.#frames;
    const onScreen = Object.fromEntries(Object.entries(rect).map(([side, length]) => [side, length * zoom]));
    return { ...onScreen, origin: await this.#origin() };
  }

  /** The screen position of the page's top left corner. */
  async #origin() {
    const told = once(this.#session, 'whereabouts');
    this.#session.askWhereabouts();
    const [{ x, y, w, h }] = await told;
    return { x, y, width: w, height: h };
  }

  /**
   * The first true value that is read. A new document ends the wait on the old one, and the wait
   * continues there.
   */
  async #waitFor({ expression }) {
    for (;;) {
      const generation = this.#page.generation;
      try {
        await this.#page.evaluate(`standin.waitUntil(() => (${expression}))`);
        const value = await this.#read(expression);
        if (value) return value;
      } catch (error) {
        if (!(error instanceof DevToolsError)) throw error;
        await until(this.#page, 'document', () => this.#page.generation !== generation);
      }
    }
  }

  /** Resolves when the host has handled all events and its window shows the current page. */
  async #settled() {
    do {
      await until(this.#session, 'handled', () => !this.#session.hasUnhandledEvents);
      await this.#painted(await this.#frames.fresh());
    } while (this.#session.hasUnhandledEvents);
  }

  /** How much of the user's input the page has handled, once it is as much as requested. */
  async #taken({ releases = 0, keys = 0 }) {
    const input = this.#input;
    await until(input, 'taken', () => input.taken.releases >= releases && input.taken.keys >= keys);
    return input.taken;
  }
}
