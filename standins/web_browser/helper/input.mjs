import { EventEmitter } from 'node:events';

// Names of the keys that do something other than write a character, by virtual key code.
const kKeyNames = {
  8: 'Backspace', 9: 'Tab', 13: 'Enter', 16: 'Shift', 17: 'Control', 18: 'Alt', 27: 'Escape',
  33: 'PageUp', 34: 'PageDown', 35: 'End', 36: 'Home', 37: 'ArrowLeft', 38: 'ArrowUp',
  39: 'ArrowRight', 40: 'ArrowDown', 45: 'Insert', 46: 'Delete',
};
const kSpaceKey = 32;
const kLeftButton = 1;

/**
 * Passes the host's mouse and keyboard input to the page, in the order of its arrival. Emits
 * 'taken' each time the page has handled an input.
 */
export class Input extends EventEmitter {
  #page;
  #releases = 0;
  #keys = 0;

  constructor(page) {
    super();
    this.setMaxListeners(0);
    this.#page = page;
  }

  /**
   * How much input the page has handled: {releases, keys}, the mouse buttons and the keys that were
   * released.
   */
  get taken() {
    return { releases: this.#releases, keys: this.#keys };
  }

  /** `message` is {type, x, y, button, buttons, count, mods, dx, dy} in page pixels. */
  mouse({ type, x, y, button, buttons, count, mods, dx, dy }) {
    const event = {
      type, x, y, buttons, clickCount: count, modifiers: mods,
      // The engine starts a drag only if the move names the button that is held.
      button: type === 'mouseMoved' && buttons & kLeftButton ? 'left' : button,
      ...(type === 'mouseWheel' ? { deltaX: dx, deltaY: dy } : {}),
    };
    const sent = this.#send('Input.dispatchMouseEvent', event);
    if (type === 'mouseReleased') this.#count(sent, () => (this.#releases += 1));
  }

  /** `message` is {type: 'rawKeyDown' | 'keyUp' | 'char', vk, text, mods}. */
  key({ type, vk, text, mods }) {
    const name = kKeyNames[vk] ?? (vk === kSpaceKey ? ' ' : text);
    const sent = this.#send('Input.dispatchKeyEvent', {
      type, modifiers: mods, key: name, code: kKeyNames[vk] ?? (vk === kSpaceKey ? 'Space' : ''),
      ...(type === 'char' ? { text } : { windowsVirtualKeyCode: vk }),
    });
    if (type === 'keyUp') this.#count(sent, () => (this.#keys += 1));
  }

  async #count(sent, add) {
    await sent;
    add();
    this.emit('taken');
  }

  /**
   * Input that the page can no longer take is lost, as on any closing window. Nothing waits for the
   * answer to a move: the engine sends it with the page's next picture, and there may be none
   * before the button that follows.
   */
  #send(method, params) {
    const send = params.type === 'mouseMoved' ? 'sendAfterTurn' : 'sendInTurn';
    return this.#page[send](method, params).catch(() => {});
  }
}
