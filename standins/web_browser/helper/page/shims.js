// Members that documents of the WebBrowser control have and modern engines lack. They are added to
// the engine's own prototypes, so that dispatch.js handles them like every other member.

const kNamedTags = new Set(
  ('A APPLET BUTTON EMBED FORM FRAME FRAMESET IFRAME IMG INPUT MAP META OBJECT SELECT TEXTAREA')
    .split(' '));

/** Whether an element has a name: by its id, or by the name of a tag that supports names. */
function answersTo(element, name) {
  if (element.id === name) return true;
  return kNamedTags.has(element.tagName) && element.getAttribute('name') === name;
}

/** A live list: every access computes its members again. */
class ElementCollection {
  constructor(members) {
    this.members_ = members;
  }

  get length() {
    return this.members_().length;
  }

  /**
   * By position for a number, by id or name for a text; several elements with the same name form a
   * collection.
   */
  item(key = 0, index) {
    if (typeof key === 'number') return this.members_()[key] ?? null;
    const bearers = () =>
      this.members_().filter((node) => node instanceof Element && answersTo(node, String(key)));
    const found = bearers();
    if (index !== undefined) return found[index] ?? null;
    return found.length > 1 ? new ElementCollection(bearers) : (found[0] ?? null);
  }

  tags(name) {
    const wanted = String(name).toUpperCase();
    return new ElementCollection(() => this.members_().filter((node) => node.tagName === wanted));
  }
}

function define(prototype, name, descriptor) {
  Object.defineProperty(prototype, name, { configurable: true, enumerable: true, ...descriptor });
}

const kModeOfTagNamesOnly = 9;
const nativeCreateElement = Document.prototype.createElement;
define(Document.prototype, 'createElement', {
  /** Takes a tag name; before mode 9 also a whole start tag with its attributes. */
  value(tag) {
    const text = String(tag);
    if (this.documentMode >= kModeOfTagNamesOnly || !text.trimStart().startsWith('<')) return nativeCreateElement.call(this, text);
    // Parsed below an element of this document, because a template's document would not be in
    // quirks mode.
    const holder = nativeCreateElement.call(this, 'div');
    holder.innerHTML = text;
    const element = holder.firstElementChild;
    if (element === null) return nativeCreateElement.call(this, text);
    element.remove();
    element.replaceChildren();
    return element;
  },
});

define(Document.prototype, 'getElementsByName', {
  /** Matches ids as well as names. */
  value(name) {
    const wanted = String(name);
    return new ElementCollection(() =>
      [...this.getElementsByTagName('*')].filter(
        (element) => element.id === wanted || element.getAttribute('name') === wanted));
  },
});

define(Document.prototype, 'documentMode', { get: documentMode });

define(Document.prototype, 'parentWindow', {
  get() {
    return this.defaultView;
  },
});

define(Node.prototype, 'removeNode', {
  /**
   * Removes the node from its document, with its subtree, or with its children taking its place.
   */
  value(deep = false) {
    if (!deep) this.replaceWith(...this.childNodes);
    else this.parentNode?.removeChild(this);
    return this;
  },
});

define(HTMLElement.prototype, 'disabled', {
  get() {
    return this.hasAttribute('disabled');
  },
  set(value) {
    this.toggleAttribute('disabled', Boolean(value));
  },
});

const kPixelsPerUnit = { px: 1, pt: 96 / 72, pc: 16, in: 96, cm: 96 / 2.54, mm: 96 / 25.4, '': 1 };
for (const side of ['Height', 'Width', 'Top', 'Left', 'Right', 'Bottom']) {
  const property = side.toLowerCase();
  define(CSSStyleDeclaration.prototype, `pixel${side}`, {
    /** The inline length in whole pixels; 0 if there is none or its unit is not absolute. */
    get() {
      const [, number, unit] = /^(-?[\d.]+)([a-z]*)$/.exec(this[property]) ?? [];
      return Math.round(Number(number ?? 0) * (kPixelsPerUnit[unit ?? ''] ?? 0));
    },
    set(value) {
      this[property] = `${value}px`;
    },
  });
}
