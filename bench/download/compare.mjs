// Times the download object, the bare transfer and curl in turn; see run.
import { spawn } from 'node:child_process';
import { randomBytes } from 'node:crypto';
import { once } from 'node:events';
import fs from 'node:fs';
import path from 'node:path';
import { createInterface } from 'node:readline';
import { UpdateSource } from '../../standins/update_source/server.mjs';
import { downloadClient, prefixFolder, root } from '../../tests/e2e/harness.mjs';
import { windowsBuild } from '../../tools/windows_build.mjs';

const kGoal = 0.95;
const kBytes = 200 * 1000 * 1000;
const kFile = '/large.bin';
const repetitions = Number(process.env.KITBAY_BENCH_REPETITIONS ?? 11);

const folder = path.join(prefixFolder, 'drive_c/throughput');
const content = randomBytes(kBytes);
const source = await UpdateSource.start();
source.publish(kFile, content);

const clients = {
  'download object': {
    file: path.join(folder, 'object.bin'),
    command: path.join(root, 'tools/wine_run'),
    words: [downloadClient, source.host, kFile, 'C:\\throughput\\object.bin'],
    last: /"Completed"/,
  },
  'bare transfer': {
    file: path.join(folder, 'bare.bin'),
    command: path.join(root, 'tools/wine_run'),
    words: [process.env.KITBAY_BARE_TRANSFER ?? path.join(windowsBuild, 'bench/download/bare_transfer.exe'),
      String(source.port), kFile, 'C:\\throughput\\bare.bin'],
    last: /done/,
  },
  curl: {
    file: path.join(folder, 'curl.bin'),
    command: 'curl',
    words: ['-sS', '--write-out', 'done\\n', '-o', path.join(folder, 'curl.bin'), source.origin + kFile],
    last: /done/,
  },
};

/** Fetches the file again and returns the time in milliseconds. */
async function fetchOnce({ file, command, words, last }) {
  fs.rmSync(file, { force: true });
  source.requests.length = 0;
  const asked = source.request(kFile).then(() => performance.now());
  const environment = { ...process.env, WINEPREFIX: prefixFolder };
  const client = spawn(command, words, { env: environment, stdio: ['ignore', 'pipe', 'inherit'] });
  const exit = once(client, 'exit');
  let ended;
  for await (const line of createInterface(client.stdout)) if (last.test(line)) ended = performance.now();
  await exit;
  if (ended === undefined) throw new Error(`${command} ${words[0]} failed`);
  if (!content.equals(fs.readFileSync(file))) throw new Error(`${file} is not what was sent`);
  return ended - (await asked);
}

const median = (times) => times.toSorted((a, b) => a - b)[times.length >> 1];

fs.mkdirSync(folder, { recursive: true });
const times = Object.fromEntries(Object.keys(clients).map((name) => [name, []]));
// The first round only warms up.
for (let round = 0; round <= repetitions; ++round) {
  for (const [name, client] of Object.entries(clients)) {
    const lasted = await fetchOnce(client);
    if (round > 0) times[name].push(lasted);
  }
}
fs.rmSync(folder, { recursive: true, force: true });
await source.close();

for (const [name, all] of Object.entries(times)) {
  const speed = kBytes / 1e3 / median(all);
  const [least, most] = [Math.min(...all), Math.max(...all)].map(Math.round);
  console.log(`${name}: ${Math.round(median(all))} ms (${least} to ${most}), ${Math.round(speed)} MB/s`);
}
const ratioTo = (name) => median(times[name]) / median(times['download object']);
const ratio = ratioTo('bare transfer');
console.log(`throughput of the download object: ${ratio.toFixed(2)} of the bare transfer's (goal: at least ${kGoal})`);
console.log(`and ${ratioTo('curl').toFixed(2)} of curl's, which measures Wine and is not judged`);
process.exitCode = ratio >= kGoal ? 0 : 1;
