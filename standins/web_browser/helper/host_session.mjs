import { EventEmitter } from 'node:events';

/** A host that makes that many calls without handling a message is at work on the page. */
const kCallsOfLongWork = 20;

/**
 * What the host requests and receives. `calls` carries its requests, in their order, and the
 * answers; `notices` carries what happens on the page. Emits 'handled' when the host has handled an
 * event, 'painted' when it has painted a picture, and 'whereabouts' with the position of its
 * window.
 */
export class HostSession extends EventEmitter {
  #calls;
  #notices;
  #page;
  #frames;
  #input;
  #unhandled = new Set();
  #callCount = 0;
  #callsInARow = 0;
  #callsOf = new Map();
  #lastPainted = { number: 0, callCount: 0 };

  constructor({ calls, notices, page, frames, input }) {
    super();
    this.setMaxListeners(0);
    this.#calls = calls;
    this.#notices = notices;
    this.#page = page;
    this.#frames = frames;
    this.#input = input;
    page.on('beforeNavigate', (event) => notices.send({ t: 'beforeNavigate', ...event }));
    page.on('navigated', (event) => this.#navigated(event));
    page.on('complete', (event) => notices.send({ t: 'complete', g: page.generation, ...event }));
    for (const t of ['frameNavigated', 'frameComplete']) page.on(t, (event) => notices.send({ t, ...event }));
    page.on('failed', (event) => notices.send({ t: 'failed', ...event }));
    page.on('report', (text) => this.#report(text));
    frames.on('frame', (frame) => notices.send({ t: 'frame', ...frame }));
    calls.on('message', (message) => this.#handle(message));
  }

  /** How many calls the host has made so far. */
  get callCount() {
    return this.#callCount;
  }

  /**
   * The newest picture that the host has painted, {number, callCount}, with the number of calls
   * made before.
   */
  get lastPainted() {
    return this.#lastPainted;
  }

  get hasUnhandledEvents() {
    return this.#unhandled.size > 0;
  }

  /** How many late-bound calls the host has made so far: {total, members: {name: number}}. */
  get calls() {
    const members = Object.fromEntries(this.#callsOf);
    return { total: [...this.#callsOf.values()].reduce((sum, count) => sum + count, 0), members };
  }

  /** Asks the host where its window is; it answers with 'whereabouts'. */
  askWhereabouts() {
    this.#notices.send({ t: 'whereabouts' });
  }

  #navigated(event) {
    this.#unhandled.clear();
    this.#notices.send({ t: 'navigated', g: this.#page.generation, ...event });
  }

  #report(text) {
    const report = JSON.parse(text);
    this.#unhandled.add(report.n);
    this.#notices.send({ ...report, g: this.#page.generation });
  }

  #handle(message) {
    if (message.i === undefined) this.#handlesMessages();
    else this.#countCall();
    switch (message.op) {
      case 'invoke': return this.#invoke(message);
      case 'document': return this.#reply(message.i, { v: { h: 1 }, g: this.#page.generation });
      case 'navigate': return this.#navigate(message);
      case 'leavesByTab': return this.#leavesByTab(message);
      case 'selection': return this.#selection(message);
      case 'errorPage': return this.#page.showError(message.url).catch(() => {});
      case 'decide': return this.#page.decide(message.n, message.cancel);
      case 'size': return this.#frames.resize(message.w, message.h, message.zoom).catch(() => {});
      case 'mouse': return this.#mouse(message);
      case 'key': return this.#input.key(message);
      case 'colors': return this.#page.showColors(message.colors);
      case 'scroll': return this.#scroll(message);
      case 'handled': return this.#handled(message);
      case 'painted': return this.#painted(message.n);
      case 'whereabouts': return this.emit('whereabouts', message);
      default: return this.#calls.close();
    }
  }

  /**
   * The control draws in its host's thread: nothing while that thread works on the page. A picture that
   * the host has yet to paint says when it handles messages again.
   */
  #countCall() {
    this.#callCount += 1;
    this.#callsInARow += 1;
    const willPaint = this.#frames.last > this.#lastPainted.number;
    if (this.#callsInARow > kCallsOfLongWork && willPaint) this.#frames.pause();
  }

  #handlesMessages() {
    this.#callsInARow = 0;
    this.#frames.resume();
  }

  #reply(number, answer) {
    this.#calls.send({ i: number, ...answer });
  }

  async #invoke({ i, g, r, ...request }) {
    const released = (r ?? []).filter(([generation]) => generation === this.#page.generation);
    this.#callsOf.set(request.n, (this.#callsOf.get(request.n) ?? 0) + 1);
    request.r = released.map(([, handle]) => handle);
    const answer = await this.#page.answer(g, request);
    this.#calls.sendJson(`{"i":${i},${answer.slice(1)}`);
  }

  #navigate({ i, url, flags, host }) {
    this.#reply(i, { v: true });
    this.#page.navigate(url, flags ?? undefined, host).catch(() => {});
  }

  async #leavesByTab({ i, back }) {
    const leaves = await this.#page.evaluate(`standin.leavesByTab(${Boolean(back)})`).catch(() => true);
    this.#reply(i, { v: leaves });
  }

  async #selection({ i }) {
    const text = await this.#page.evaluate('String(getSelection())').catch(() => '');
    this.#reply(i, { v: text });
  }

  #handled({ g, n }) {
    this.#unhandled.delete(n);
    if (g === this.#page.generation) this.#page.evaluate(`standin.forget(${Number(n)})`).catch(() => {});
    this.emit('handled');
  }

  #scroll({ g, key }) {
    if (g === this.#page.generation) this.#page.evaluate(`standin.scrollByKey(${JSON.stringify(key)})`).catch(() => {});
  }

  #mouse(message) {
    const { zoom } = this.#frames;
    this.#input.mouse({ ...message, x: message.x / zoom, y: message.y / zoom });
  }

  #painted(number) {
    this.#lastPainted = { number: Math.max(this.#lastPainted.number, number), callCount: this.#callCount };
    this.emit('painted');
  }
}
