import { EventEmitter } from 'node:events';

// UTF-8 has no place for half a surrogate pair, and the host's reader refuses one.
const wellFormed = (json) => json.replace(/\\(?:\\|ud[89a-f][0-9a-f]{2})/g,
  (escape) => escape === '\\\\' ? escape : '\ufffd');

/** Messages over a socket, one JSON object per line. Emits 'message' for each and 'end' once. */
export class LineConnection extends EventEmitter {
  #socket;
  #unfinished = '';

  constructor(socket) {
    super();
    this.#socket = socket;
    socket.setNoDelay(true);
    socket.setEncoding('utf8');
    socket.on('data', (text) => this.#receive(text));
    socket.on('error', () => {});  // 'close' follows.
    socket.on('close', () => this.emit('end'));
  }

  send(message) {
    this.sendJson(JSON.stringify(message));
  }

  sendJson(json) {
    this.#socket.write(`${wellFormed(json)}\n`);
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
