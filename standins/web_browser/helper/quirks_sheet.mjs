import fs from 'node:fs';
import * as csstree from 'css-tree';

const source = fs.readFileSync(new URL('page/quirks_css.js', import.meta.url), 'utf8');

/** The page side's `quirksSheet`, for style sheets in separate files. */
export const quirksSheet = new Function('csstree', `${source}\nreturn quirksSheet;`)(csstree);
