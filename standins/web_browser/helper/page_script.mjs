import fs from 'node:fs';
import { createRequire } from 'node:module';
import { kStandardColors } from './system_colors.mjs';

const kParts = ['quirks_css.js', 'quirks_page.js', 'shims.js', 'members.js', 'scrolling.js',
  'events.js', 'dispatch.js', 'waiting.js'];
const kParser = createRequire(import.meta.url).resolve('css-tree/dist/csstree');
const read = (name) => fs.readFileSync(new URL(`page/${name}`, import.meta.url), 'utf8');

/** Name of the isolated world in which the page side runs: page scripts neither see nor stop it. */
export const kWorldName = 'webBrowserHost';
/** The function by which the page side reports, added to that world as a binding. */
export const kBindingName = 'tellHost';

/** The page side as one script for every new document; frames below the top do not get it. */
export function pageScript() {
  const parts = [fs.readFileSync(kParser, 'utf8'), ...kParts.map(read)];
  return `(() => { 'use strict';
    if (window !== window.top) return;
    const kEngineSheet = ${JSON.stringify(read('quirks.css'))};
    const kStandardColors = ${JSON.stringify(kStandardColors)};
    ${parts.join('\n')}
    globalThis.standin = {
      answer, documentMode, leavesByTab, scrollByKey, quirksSheet, quirksStyle, waitUntil, forget: (number) => events.forget(number),
      showColors: (colors) => quirks.showColors(colors), showAsHostWants: (sheet) => quirks.showAsHostWants(sheet),
    };
  })();`;
}
