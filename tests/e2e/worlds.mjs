// Who runs the program, and to whom the suite belongs.
//
// Wine refuses nobody anything, so what Windows refuses is refused here by other means: a world has
// its own prefix, in which the user's classes are not found among the machine's and none of the
// suite's objects is registered.
import { execFileSync } from 'node:child_process';
import fs from 'node:fs';
import path from 'node:path';
import { fileURLToPath } from 'node:url';

const root = fileURLToPath(new URL('../..', import.meta.url)).replace(/\/$/, '');
const kPrefixTool = path.join(root, 'tools/wine_prefix');

/** A number that no account has, for a user who owns nothing. */
const kNobody = 61893;
const asNobody = { uid: kNobody, gid: kNobody, cwd: '/' };

function run(program, words, options = {}) {
  return execFileSync(program, words, { stdio: ['ignore', 'pipe', 'pipe'], encoding: 'utf8', ...options });
}

/**
 * Makes this process use the prefix of that name, and start the suite's programs with an
 * administrator's rights: newer versions of Wine start every program without them. Prefixes are
 * named before the harness looks at them.
 */
function name(world) {
  const bits = process.env.KITBAY_BITS ?? '64';
  process.env.WINEPREFIX = path.join(root, `build/wine${bits}-${world}`);
  process.env.KITBAY_CLASSES = 'apart';
  process.env.KITBAY_RIGHTS = 'elevated';
}

/**
 * The world of a user with an administrator's rights, which Wine assumes everybody has. Whatever
 * reads the prefix when it is imported, such as the harness, must not have been imported before.
 */
export function withRights() {
  name('with-rights');
  run(kPrefixTool, []);
}

/**
 * The world of a standard user, for whom `prepare` lays out a suite and returns its folder. From
 * then on the suite belongs to somebody else, the machine's `keys` refuse writing, and this process
 * belongs to an ordinary user until it ends. Returns the reason if that is impossible, otherwise
 * null.
 */
export async function standardUser(prepare, keys) {
  const { asRoot, reason } = meansOfRights();
  if (reason) return reason;
  name('standard-user');
  startAfresh(process.env.WINEPREFIX, asRoot);
  const folder = await prepare();
  run(kPrefixTool, ['--stop']);
  asRoot('chown', '-R', '0:0', folder);
  if (process.getuid() === 0) becomeNobody(process.env.WINEPREFIX);
  serveForGood();
  const { probe } = await import('./harness.mjs');
  // The desktop belongs to the first program that looks at it, so that program is this one.
  await probe('windows');
  for (const key of keys) await probe('refuse', key);
  return null;
}

/** Ends everything that runs in the world, and gives the suite back to a user who may have it. */
export function endStandardUser(folder) {
  run(kPrefixTool, ['--stop']);
  const { asRoot } = meansOfRights();
  asRoot?.('chown', '-R', `${process.getuid()}:${process.getgid()}`, folder);
}

/** How this process can change users; a reason if it cannot. */
function meansOfRights() {
  if (process.getuid() === 0) {
    try {
      run('test', ['-r', kPrefixTool], asNobody);
      return { asRoot: (...words) => run(words[0], words.slice(1)) };
    } catch {
      return { reason: `another user of this machine cannot read the tree in ${root}` };
    }
  }
  try {
    run('sudo', ['-n', 'true']);
    return { asRoot: (...words) => run('sudo', ['-n', ...words]) };
  } catch {
    return { reason: "nothing can be made somebody else's: this user is neither root nor may use sudo" };
  }
}

// What an earlier run left belongs to others, and Wine's server may still run for them.
function startAfresh(prefix, asRoot) {
  if (fs.existsSync(prefix)) {
    const owner = fs.statSync(prefix).uid;
    run(kPrefixTool, ['--stop'], { env: process.env, ...(process.getuid() === 0 ? { uid: owner, gid: owner } : {}) });
    asRoot('rm', '-rf', prefix);
  }
  run(kPrefixTool, []);
}

// The whole prefix except its drive becomes the user's, as does whatever every user may write to on
// the drive. What the user stores there belongs to somebody else and is deleted.
function becomeNobody(prefix) {
  // It names a folder of the former user, in which Wine's server would listen.
  fs.rmSync(path.join(prefix, 'wineserver'), { force: true });
  const home = path.join(prefix, 'home');
  fs.mkdirSync(home);
  const drive = path.join(prefix, 'drive_c');
  const users = path.join(drive, 'users');
  for (const user of fs.readdirSync(users).filter((entry) => entry !== 'Public')) {
    fs.rmSync(path.join(users, user), { recursive: true });
  }
  const own = fs.readdirSync(prefix).filter((entry) => entry !== 'drive_c').map((entry) => path.join(prefix, entry));
  const writable = [users, ...['ProgramData', 'windows/temp'].map((entry) => path.join(drive, entry))];
  const owner = `${kNobody}:${kNobody}`;
  run('chown', [owner, prefix]);
  run('chown', ['-hR', owner, ...[...own, ...writable].filter((file) => fs.existsSync(file))]);
  process.env.KITBAY_HOME = home;
  for (const mine of ['TMPDIR', 'XDG_RUNTIME_DIR', 'XAUTHORITY']) delete process.env[mine];
  process.setgroups([]);
  process.setgid(kNobody);
  process.setuid(kNobody);
}

// What a key refuses is forgotten when Wine's server ends.
function serveForGood() {
  const script = 'root=$1; source "$root/tools/wine_environment.sh"; "$wineserver" -p';
  run('bash', ['-c', script, 'bash', root], { stdio: 'ignore' });
}
