import { EventEmitter } from 'node:events';

/** JSON text in ASCII: one \u escape for every UTF-16 unit outside it. */
export function toAscii(json) {
  return json.replace(/[\u007f-\uffff]/g,
    (unit) => `\\u${unit.charCodeAt(0).toString(16).padStart(4, '0')}`);
}

/** Messages over a socket, one JSON object per line. Emits 'message' for each and 'end' once. */
export class LineConnection extends EventEmitter {
  #socket;
  #unfinished = '';

  constructor(socket) {
    super();
    this.#socket = socket;
    socket.setNoDelay(true);
    socket.setEncoding('latin1');  // Lines are ASCII.
    socket.on('data', (text) => this.#receive(text));
    socket.on('error', () => {});  // 'close' follows.
    socket.on('close', () => this.emit('end'));
  }

  send(message) {
    this.sendJson(JSON.stringify(message));
  }

  sendJson(json) {
    this.#socket.write(`${toAscii(json)}\n`);
  }

  close() {
    this.#socket.destroy();
  }

  #receive(text) {
    const lines = (this.#unfinished + text).split('\n');
    this.#unfinished = lines.pop();
    for (const line of lines) {
      let message;
      try {
        message = JSON.parse(line);
      } catch {
        this.close();
        return;
      }
      this.emit('message', message);
    }
  }
}
