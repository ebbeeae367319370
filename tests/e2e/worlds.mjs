// Who runs the program, and whose the suite is.
//
// Wine refuses nobody anything, so what Windows refuses is refused here by other means: a world has a
// prefix of its own, in which the user's classes are not found among the machine's and no objects of the
// suite are registered.
import { execFileSync } from 'node:child_process';
import path from 'node:path';
import { fileURLToPath } from 'node:url';

const root = fileURLToPath(new URL('../..', import.meta.url)).replace(/\/$/, '');
const kPrefixTool = path.join(root, 'tools/wine_prefix');

function run(program, words, options = {}) {
  return execFileSync(program, words, { stdio: ['ignore', 'pipe', 'pipe'], ...options });
}

/**
 * Begins a world in the prefix of that name, for the tests that are imported from here on. What looks at
 * the prefix when it is imported, such as the harness, must not have been imported before.
 */
function enter(name) {
  const bits = process.env.KITBAY_BITS ?? '64';
  process.env.WINEPREFIX = path.join(root, `build/wine${bits}-${name}`);
  process.env.KITBAY_CLASSES = 'apart';
}

/** The world of a user with an administrator's rights, which is what Wine takes everybody for. */
export function withRights() {
  enter('with-rights');
  run(kPrefixTool, []);
}
