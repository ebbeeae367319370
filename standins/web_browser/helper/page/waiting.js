// Waits for a state of the page, for its inspection.

/** The first true value of `probe`. */
function waitUntil(probe) {
  return new Promise((resolve, reject) => {
    const observer = new MutationObserver(check);
    let settled = false;
    function settle(how, value) {
      settled = true;
      observer.disconnect();
      how(value);
    }
    function check() {
      if (settled) return;
      try {
        const value = probe();
        if (value) settle(resolve, value);
      } catch (error) {
        settle(reject, error);
      }
    }
    // Not every state is in the tree (a scroll position, a loaded image), so each frame is checked
    // too.
    function eachFrame() {
      check();
      if (!settled) requestAnimationFrame(eachFrame);
    }
    observer.observe(document,
      { subtree: true, childList: true, attributes: true, characterData: true });
    eachFrame();
  });
}
