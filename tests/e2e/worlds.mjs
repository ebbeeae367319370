// Who runs the program, and whose the suite is.
//
// Wine refuses nobody anything, so what Windows refuses is refused here by other means: a world has a
// prefix of its own, in which the user's classes are not found among the machine's and no objects of the
// suite are registered.
import { execFileSync } from 'node:child_process';
import fs from 'node:fs';
import path from 'node:path';
import { fileURLToPath } from 'node:url';

const root = fileURLToPath(new URL('../..', import.meta.url)).replace(/\/$/, '');
const kPrefixTool = path.join(root, 'tools/wine_prefix');

/** A number that no account has, for a user who owns nothing. */
const kNobody = 61893;

function run(program, words, options = {}) {
  return execFileSync(program, words, { stdio: ['ignore', 'pipe', 'pipe'], ...options });
}

/** What this test may do about users; a reason where it may do nothing. */
function meansOfRights() {
  if (process.getuid() === 0) {
    try {
      run('true', [], { uid: kNobody, gid: kNobody, cwd: '/' });
      run('test', ['-r', kPrefixTool], { uid: kNobody, gid: kNobody, cwd: '/' });
      return { asRoot: (...words) => run(words[0], words.slice(1)) };
    } catch {
      return { reason: `another user cannot read the tree in ${root}` };
    }
  }
  try {
    run('sudo', ['-n', 'true']);
    return { asRoot: (...words) => run('sudo', ['-n', ...words]) };
  } catch {
    return { reason: 'this user can make nothing somebody else\'s: it is neither root nor may it use sudo' };
  }
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

/**
 * The world of a standard user. `prepare` lays a suite out, with the rights of its owner; then the suite
 * is somebody else's, the machine's `keys` refuse writing, and this process is an ordinary user's to its
 * end. Gives a reason where that cannot be.
 */
export async function standardUser(prepare, keys) {
  const { asRoot, reason } = meansOfRights();
  if (reason) return reason;
  enter('standard-user');
  const prefix = process.env.WINEPREFIX;
  if (fs.existsSync(prefix)) asRoot('chown', '-R', String(process.getuid()), prefix);
  const { probe, run: runHere } = await import('./harness.mjs');
  await runHere(kPrefixTool);
  await prepare();
  await runHere(kPrefixTool, ['--stop']);
  belongsToTheUser(prefix, asRoot);
  await serveForGood(runHere);
  // The desktop is started by the first program that looks at it, and belongs to nobody else then.
  await probe('windows');
  for (const key of keys) await probe('refuse', key);
  return null;
}

// All but the system's and the suite's files.
function belongsToTheUser(prefix, asRoot) {
  const drive = path.join(prefix, 'drive_c');
  asRoot('chown', '-R', '0:0', path.join(drive, 'Program Files/Ovalink'));
  if (process.getuid() !== 0) return;
  const home = path.join(prefix, 'home');
  fs.mkdirSync(home, { recursive: true });
  const whole = ['users', 'ProgramData', 'windows/temp'].map((name) => path.join(drive, name));
  const owner = `${kNobody}:${kNobody}`;
  asRoot('chown', '-hR', owner, path.join(prefix, 'dosdevices'), home, ...whole);
  asRoot('chown', owner, prefix, ...fs.readdirSync(prefix).filter((name) => /\.reg$|^\./.test(name)).map((name) => path.join(prefix, name)));
  writeBrowser(path.join(home, 'chromium'));
  process.env.KITBAY_HOME = home;
  delete process.env.XDG_RUNTIME_DIR;
  process.setgroups([]);
  process.setgid(kNobody);
  process.setuid(kNobody);
}

// The browser's own sandbox needs rights that a user without an account may lack.
function writeBrowser(file) {
  const programs = ['/usr/lib/chromium/chromium', '/usr/lib/chromium-browser/chromium-browser'];
  const program = programs.find((name) => fs.existsSync(name));
  fs.writeFileSync(file, `#!/bin/sh\nexec ${program} --no-sandbox "$@"\n`, { mode: 0o755 });
  process.env.WEB_BROWSER_STANDIN_CHROMIUM = file;
}

// What a key refuses is forgotten with Wine's server.
async function serveForGood(runHere) {
  await runHere('bash', ['-c', 'root=$1; source "$root/tools/wine_environment.sh"; "$wineserver" -p', 'bash', root]);
}
