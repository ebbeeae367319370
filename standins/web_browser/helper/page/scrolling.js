// What the scrolling keys do once the host has allowed them.

const kPixelsPerArrow = 40;
const kShareOfPage = 0.875;

/** How far a key scrolls a box, in pixels: to the right and down. */
function distanceOf(key, { clientHeight, scrollHeight }) {
  const page = clientHeight * kShareOfPage;
  return {
    ArrowUp: [0, -kPixelsPerArrow], ArrowDown: [0, kPixelsPerArrow],
    ArrowLeft: [-kPixelsPerArrow, 0], ArrowRight: [kPixelsPerArrow, 0],
    PageUp: [0, -page], PageDown: [0, page], ' ': [0, page],
    Home: [0, -scrollHeight], End: [0, scrollHeight],
  }[key];
}

/**
 * Scrolls the innermost box around the focused element that can scroll further in that direction.
 */
function scrollByKey(key) {
  for (let box = document.activeElement; box; box = box.parentElement) {
    const [x, y] = distanceOf(key, box);
    const before = [box.scrollLeft, box.scrollTop];
    if (!/auto|scroll/.test(getComputedStyle(box).overflow)) continue;
    box.scrollBy({ left: x, top: y, behavior: 'instant' });
    if (box.scrollLeft !== before[0] || box.scrollTop !== before[1]) return;
  }
}
