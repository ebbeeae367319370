// Which Windows is under test, according to KITBAY_BITS and WINEPREFIX, as in
// tools/wine_environment.sh.
import path from 'node:path';
import { fileURLToPath } from 'node:url';

const build = fileURLToPath(new URL('../build', import.meta.url));

/** "32" or "64". */
export const bits = process.env.KITBAY_BITS ?? '64';
if (!['32', '64'].includes(bits)) throw new Error(`KITBAY_BITS is ${bits}; it must be 32 or 64`);

/** What was built for it. */
export const windowsBuild = path.join(build, `win${bits}`);

/** The Wine prefix in which its programs run, according to the current WINEPREFIX. */
export function winePrefix() {
  const named = process.env.WINEPREFIX;
  return named?.startsWith(`${build}/`) ? named : path.join(build, bits === '32' ? 'wine32' : 'wine');
}
