import fs from 'node:fs';

const kParts = ['shims.js', 'events.js', 'dispatch.js', 'waiting.js'];

/** Name of the isolated world in which the page side runs: page scripts neither see nor stop it. */
export const kWorldName = 'webBrowserHost';
/** The function by which the page side reports, added to that world as a binding. */
export const kBindingName = 'tellHost';

/** The page side as one script for every new document; frames below the top stay without it. */
export function pageScript() {
  const parts = kParts.map((part) => fs.readFileSync(new URL(`page/${part}`, import.meta.url), 'utf8'));
  return `(() => { 'use strict';
    if (window !== window.top) return;
    ${parts.join('\n')}
    globalThis.standin = {
      answer, leavesByTab, waitUntil, drawn, forget: (number) => events.forget(number),
    };
  })();`;
}
