// More members that documents of the WebBrowser control have and modern engines lack.

define(Element.prototype, 'mergeAttributes', {
  /** Copies the attributes of another element; id and name only if they are not preserved. */
  value(source, preserve = true) {
    for (const { name, value } of [...source.attributes]) {
      if (!preserve || !(name === 'id' || name === 'name')) this.setAttribute(name, value);
    }
  },
});

define(HTMLElement.prototype, 'setActive', {
  /** Gives the focus to the element where it is: the page does not scroll to it. */
  value() {
    this.focus({ preventScroll: true });
  },
});
