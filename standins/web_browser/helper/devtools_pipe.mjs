import { EventEmitter } from 'node:events';

/** A command that the browser refused, or that got no answer because the browser ended. */
export class DevToolsError extends Error {}

const kLateMs = 60000;

/**
 * The DevTools protocol over a pair of pipes: messages are JSON texts, each ended by a NUL. Emits
 * every event of the browser under its method name as (params, sessionId), and 'end' once. Logs a
 * command that the browser has not answered for a minute.
 */
export class DevToolsPipe extends EventEmitter {
  #output;
  #waiting = new Map();
  #lastId = 0;
  #unfinished = [];
  #ended = false;

  constructor(output, input) {
    super();
    this.setMaxListeners(0);
    this.#output = output;
    input.on('data', (chunk) => this.#receive(chunk));
    for (const stream of [input, output]) {
      stream.on('error', () => this.#end());
      stream.on('close', () => this.#end());
    }
  }

  /** Resolves with the command's result; rejects with a DevToolsError. */
  send(method, params = {}, sessionId = undefined) {
    if (this.#ended) return Promise.reject(new DevToolsError(`${method}: the browser has ended`));
    return new Promise((resolve, reject) => {
      const id = ++this.#lastId;
      const late = setTimeout(() => console.error(`${method} ${JSON.stringify(params)} is unanswered`), kLateMs);
      late.unref();
      this.#waiting.set(id, { method, resolve, reject, late });
      this.#output.write(`${JSON.stringify({ id, method, params, sessionId })}\0`);
    });
  }

  #receive(chunk) {
    let start = 0;
    for (let end; (end = chunk.indexOf(0, start)) >= 0; start = end + 1) {
      this.#unfinished.push(chunk.subarray(start, end));
      const text = Buffer.concat(this.#unfinished).toString('utf8');
      this.#unfinished = [];
      this.#handle(JSON.parse(text));
    }
    if (start < chunk.length) this.#unfinished.push(chunk.subarray(start));
  }

  #handle(message) {
    if (message.id === undefined) {
      this.emit(message.method, message.params, message.sessionId);
      return;
    }
    const { method, resolve, reject, late } = this.#waiting.get(message.id);
    this.#waiting.delete(message.id);
    clearTimeout(late);
    if (message.error) reject(new DevToolsError(`${method}: ${message.error.message}`));
    else resolve(message.result);
  }

  #end() {
    if (this.#ended) return;
    this.#ended = true;
    for (const { method, reject, late } of this.#waiting.values()) {
      clearTimeout(late);
      reject(new DevToolsError(`${method}: the browser has ended`));
    }
    this.#waiting.clear();
    this.emit('end');
  }
}
