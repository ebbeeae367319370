// The ways in which an update source can go wrong, by name. Each is created with its options and answers
// an exchange:
//   type, content   what an honest source would serve
//   origin          the source's scheme, host and port
//   path            the requested path
//   socket          the connection, to be written to directly
//   reset()         resets the connection
import { once } from 'node:events';
import { STATUS_CODES } from 'node:http';
import { Readable } from 'node:stream';
import { pipeline } from 'node:stream/promises';
import { validatedAnswer } from './validated_answer.mjs';

const kLoginPage = `<!DOCTYPE html>
<html>
  <head><title>Anmeldung – Gäste-WLAN</title></head>
  <body>
    <form action="/login" method="post">
      <p>Willkommen! Bitte melden Sie sich an, um fortzufahren.
      <p><input name="room"> <input name="password" type="password"> <input type="submit">
    </form>
  </body>
</html>
`;

function head(status, fields = {}) {
  const lines = Object.entries({ ...fields, Connection: 'close' }).map(([name, value]) => `${name}: ${value}`);
  return [`HTTP/1.1 ${status} ${STATUS_CODES[status]}`, ...lines, '', ''].join('\r\n');
}

function contentHead({ type, content }, length = content.length) {
  return head(200, { 'Content-Type': type, 'Content-Length': length });
}

function whole(status, type, body, fields = {}) {
  return head(status, { ...fields, 'Content-Type': type, 'Content-Length': Buffer.byteLength(body) }) + body;
}

/** The content in chunks, without the empty chunk that ends a transfer. */
function inChunks(content, size = 4096) {
  const pieces = [];
  for (let at = 0; at < content.length; at += size) {
    const piece = content.subarray(at, at + size);
    pieces.push(`${piece.length.toString(16)}\r\n`, piece, '\r\n');
  }
  return Buffer.concat(pieces.map((piece) => Buffer.from(piece)));
}

/** An honest answer that stops at some point and continues only on request. */
class HeldAnswer {
  #headFirst;
  #bytesFirst;
  #reach;
  #exchange = null;
  #headSent = false;
  #sent = 0;

  /** Settles when an answer has reached the point where it stops. */
  reached = new Promise((resolve) => (this.#reach = resolve));

  constructor(headFirst, bytesFirst) {
    this.#headFirst = headFirst;
    this.#bytesFirst = bytesFirst;
  }

  async answer(exchange) {
    this.#exchange = exchange;
    this.#headSent = false;
    this.#sent = 0;
    if (this.#headFirst) await this.#sendHead();
    if (this.#bytesFirst > 0) await this.next(this.#bytesFirst);
    this.#reach();
  }

  /** How many bytes of the content have been sent in the latest answer. */
  get sent() {
    return this.#sent;
  }

  /** Sends the next bytes, and settles when they are on their way; true if none are left. */
  async next(count = 1) {
    const { content, socket } = this.#exchange;
    await this.#sendHead();
    const bytes = content.subarray(this.#sent, this.#sent + count);
    this.#sent += bytes.length;
    await this.#write(bytes);
    if (this.#sent < content.length) return false;
    socket.end();
    return true;
  }

  /** Sends everything that is left. */
  async rest() {
    await this.next(Infinity);
  }

  /** Resets the connection. */
  breakOff() {
    this.#exchange.reset();
  }

  async #sendHead() {
    if (this.#headSent) return;
    this.#headSent = true;
    await this.#write(contentHead(this.#exchange));
  }

  async #write(bytes) {
    const { socket } = this.#exchange;
    await new Promise((resolve, reject) => socket.write(bytes, (error) => (error ? reject(error) : resolve())));
  }
}

const simply = (answer) => (options = {}) => ({ answer: (exchange) => answer(exchange, options) });

function* zeros(bytes) {
  const block = Buffer.alloc(65536);
  for (let left = bytes; left > 0; left -= block.length) yield left < block.length ? block.subarray(0, left) : block;
}

export const misbehaviours = {
  /** The request is read, then the connection is reset. */
  refuse: simply(({ reset }) => reset()),

  /** Nothing comes until the returned HeldAnswer is told to continue. */
  stall: () => new HeldAnswer(false, 0),

  /**
   * The header and the first bytes of the content come, then nothing until it is told to continue.
   */
  'stall-body': ({ after = 16 } = {}) => new HeldAnswer(true, after),

  /** The header comes; each byte of the content must be requested. */
  drip: () => new HeldAnswer(true, 0),

  /** Fewer bytes come than were announced. */
  'cut-short': simply((exchange, { after = exchange.content.length >> 1 }) => {
    exchange.socket.write(contentHead(exchange));
    exchange.socket.end(exchange.content.subarray(0, after));
  }),

  /**
   * A source that validates ends the answer after this many bytes of the body. `fields` replaces
   * header fields with wrong ones.
   */
  'validated-cut-short': simply(({ headers, content, type, socket }, { after = Infinity, fields: others = {} }) => {
    const { status, fields, body } = validatedAnswer(headers, content);
    socket.write(head(status, { 'Content-Type': type, ...fields, ...others }));
    socket.end(body.subarray(0, after));
  }),

  /** A source that validates stops after this many bytes of the body, and waits. */
  'validated-held': ({ after }) => {
    let reach;
    const reached = new Promise((resolve) => (reach = resolve));
    const answer = ({ headers, content, type, socket }) => {
      const { status, fields, body } = validatedAnswer(headers, content);
      socket.write(head(status, { 'Content-Type': type, ...fields }));
      socket.write(body.subarray(0, after), reach);
    };
    return { reached, answer };
  },

  /**
   * More bytes come than were announced: the content and `extra` bytes, of which `announced` are
   * expected.
   */
  'too-much': simply((exchange, { announced = exchange.content.length, extra = 1024 }) => {
    // In one piece, so that a client that has read the header may have the rest as well.
    const heading = Buffer.from(contentHead(exchange, announced));
    exchange.socket.end(Buffer.concat([heading, exchange.content, Buffer.alloc(extra, 'x')]));
  }),

  /** As "too-much", but the unannounced bytes come when the client has hung up, or never. */
  'too-much-later': simply((exchange, { announced }) => {
    exchange.socket.write(contentHead(exchange, announced));
    exchange.socket.write(exchange.content.subarray(0, announced));
    exchange.socket.on('end', () => exchange.socket.end(exchange.content.subarray(announced)));
  }),

  /** The length is not announced; the end of the connection is the end of the content. */
  'no-length': simply(({ type, content, socket }) => {
    socket.write(head(200, { 'Content-Type': type }));
    socket.end(content);
  }),

  chunked: simply(({ type, content, socket }) => {
    socket.write(head(200, { 'Content-Type': type, 'Transfer-Encoding': 'chunked' }));
    socket.write(inChunks(content));
    socket.end('0\r\n\r\n');
  }),

  /** Chunks of half the content, and an end without the last chunk. */
  'chunked-cut-short': simply(({ type, content, socket }) => {
    socket.write(head(200, { 'Content-Type': type, 'Transfer-Encoding': 'chunked' }));
    socket.end(inChunks(content.subarray(0, content.length >> 1)));
  }),

  /** Endless chunks until the client hangs up; `sent()` gives the number of bytes sent. */
  endless: () => {
    let sent = 0;
    const answer = async ({ type, socket }) => {
      socket.write(head(200, { 'Content-Type': type, 'Transfer-Encoding': 'chunked' }));
      const block = Buffer.alloc(65536);
      const chunk = inChunks(block, block.length);
      const closed = once(socket, 'close');
      while (!socket.destroyed) {
        sent += block.length;
        if (!socket.write(chunk)) await Promise.race([once(socket, 'drain'), closed]);
      }
    };
    return { answer, sent: () => sent };
  },

  /** `to` is a path on the same host, or a complete URL. */
  redirect: simply(({ socket, origin }, { to, status = 302 }) => {
    socket.end(whole(status, 'text/plain', 'Moved', { Location: to.startsWith('/') ? origin + to : to }));
  }),

  'redirect-loop': simply(({ socket, origin, path }) => {
    socket.end(whole(302, 'text/plain', 'Moved', { Location: origin + path }));
  }),

  /** The given status, with a page that says so in words. */
  status: simply(({ socket }, { status }) => {
    const asks = status === 401 ? { 'WWW-Authenticate': 'Basic realm="Updates"' } : {};
    socket.end(whole(status, 'text/html', `<h1>${STATUS_CODES[status]}</h1>`, asks));
  }),

  /** What a network's gateway serves in place of everything, as if all were well. */
  'login-page': simply(({ socket }) => socket.end(whole(200, 'text/html; charset=utf-8', kLoginPage))),

  empty: simply(({ type, socket }) => socket.end(whole(200, type, ''))),

  /** 100 MB of zeros; without announcing the length if not `announced`. */
  zeros: simply(async ({ type, socket }, { bytes = 100 * 1024 * 1024, announced = true }) => {
    socket.write(head(200, { 'Content-Type': type, ...(announced ? { 'Content-Length': bytes } : {}) }));
    try {
      await pipeline(Readable.from(zeros(bytes)), socket);
    } catch (error) {
      if (!socket.destroyed) throw error; // a client that has had enough hangs up
    }
  }),
};
for (const status of [401, 404, 500]) {
  misbehaviours[status] = (options) => misbehaviours.status({ ...options, status });
}
