// Events of the page, reported to the host by number. The page never waits for the host: each event
// leaves a snapshot here, which is the window's event while the host handles that number.

const kReported = ['click', 'dblclick', 'mousedown', 'mouseup', 'contextmenu', 'dragstart',
                   'keydown', 'keypress', 'keyup'];
const kButtonNames = { 0: 1, 1: 4, 2: 2 };
const kScrollingKeys = [' ', 'PageUp', 'PageDown', 'Home', 'End', 'ArrowUp', 'ArrowDown', 'ArrowLeft', 'ArrowRight'];

class EventSnapshot {
  constructor(event) {
    this.type = event.type;
    this.srcElement = event.target instanceof Element ? event.target : (event.target.parentElement ?? null);
    this.button = /^mouse/.test(event.type) ? kButtonNames[event.button] : 0;
    this.keyCode = event.type === 'keypress' ? event.charCode : (event.keyCode ?? 0);
    for (const name of ['clientX', 'clientY', 'screenX', 'screenY', 'offsetX', 'offsetY', 'x', 'y']) {
      this[name] = Math.round(event[name] ?? 0);
    }
    for (const name of ['altKey', 'ctrlKey', 'shiftKey']) this[name] = Boolean(event[name]);
    this.returnValue = undefined;
    this.cancelBubble = false;
    this.fromElement = null;
    this.toElement = null;
  }
}

class PageEvents {
  constructor() {
    this.snapshots_ = new Map();
    this.last_ = 0;
    this.current_ = 0;
    this.pressed_ = null;
  }

  current() {
    return this.snapshots_.get(this.current_) ?? null;
  }

  enter(number) {
    this.current_ = number;
  }

  /** The host has finished with an event. */
  forget(number) {
    this.snapshots_.delete(number);
  }

  listen() {
    for (const type of kReported) document.addEventListener(type, (event) => this.hear_(event));
    document.addEventListener('mousedown', (event) => (this.pressed_ = event.target), true);
    window.addEventListener('resize', (event) => this.report_(new EventSnapshot(event)));
    document.addEventListener('submit', (event) => this.followForm_(event));
  }

  hear_(event) {
    if (event.type === 'dragstart') event.preventDefault();
    if (!(event.target instanceof Element) || event.target.closest('[disabled]')) return;
    if (event.type === 'click' && event.detail > 0 && event.isTrusted &&
        event.target !== this.pressed_) {
      return;  // Pressed and released on different elements: the engine names their ancestor.
    }
    const follow = event.type === 'click' ? this.followLink_(event) : undefined;
    const menu = event.type === 'contextmenu' ? this.menuOf_(event) : undefined;
    if (menu) event.preventDefault();
    const key = event.type === 'keydown' ? this.scrollByKey_(event) : undefined;
    this.report_(new EventSnapshot(event), { follow, menu, key });
  }

  report_(snapshot, what) {
    this.snapshots_.set(++this.last_, snapshot);
    tellHost(JSON.stringify({ t: 'event', n: this.last_, type: snapshot.type, ...what }));
  }

  /** The host may cancel a key, so the page scrolls only after the host has answered. */
  scrollByKey_(event) {
    const hasKeysOfItsOwn = event.target.closest('input, select, textarea, button, [contenteditable]');
    if (hasKeysOfItsOwn || !kScrollingKeys.includes(event.key)) return undefined;
    event.preventDefault();
    return event.key;
  }

  /** The menu for what was clicked, by its CONTEXT_MENU_ number, and its position. */
  menuOf_({ target, clientX, clientY }) {
    const isField = target.matches('textarea, input:not([type=button], [type=submit], [type=reset])');
    let kind = 0;
    if (target.tagName === 'IMG') kind = 1;
    else if (isField) kind = 2;
    else if (target.closest('a[href]')) kind = 5;
    else if (!getSelection().isCollapsed) kind = 4;
    return { kind, x: Math.round(clientX), y: Math.round(clientY) };
  }

  /** The host may cancel a click, so a link is followed only after the host has answered. */
  followLink_(event) {
    const link = event.target.closest('a[href], area[href]');
    if (link === null || event.defaultPrevented) return undefined;
    event.preventDefault();
    return { url: link.href, target: link.target };
  }

  followForm_(event) {
    event.preventDefault();
    const form = event.target;
    const url = new URL(form.action, document.baseURI);
    url.search = new URLSearchParams(new FormData(form)).toString();
    this.report_(new EventSnapshot(event), { follow: { url: url.href, target: form.target } });
  }
}

/** Whether Tab would move the focus out of the page; then nothing on the page has it any more. */
function leavesByTab(back) {
  const stops = [...document.querySelectorAll('a[href], area[href], button, input, select, textarea, [tabindex]')]
    .filter((element) => element.tabIndex >= 0 && !element.closest('[disabled]') &&
                         element.getClientRects().length > 0);
  const edge = back ? stops[0] : stops[stops.length - 1];
  const leaves = edge === undefined || document.activeElement === edge;
  if (leaves) document.activeElement?.blur();
  return leaves;
}

const events = new PageEvents();
events.listen();
