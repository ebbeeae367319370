// Compares the trees that the page in memory builds from the program's markup with those of a real browser.
// KITBAY_WRITE_TREES is the program that writes the former.

import assert from 'node:assert/strict';
import { execFileSync, spawnSync } from 'node:child_process';
import { existsSync, mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { before, describe, test } from 'node:test';
import { pathToFileURL } from 'node:url';

const here = (name) => new URL(name, import.meta.url);
const inMemory = JSON.parse(execFileSync(process.env.KITBAY_WRITE_TREES, { encoding: 'utf8', maxBuffer: 1 << 28 }));

// The browser itself and not the script that starts it, which could not be ended as one process.
const kProgram = '/usr/lib/chromium/chromium-headless-shell';

function browserProgram() {
  const program = process.env.KITBAY_BROWSER ?? kProgram;
  assert.ok(existsSync(program), `no browser: ${program} is not there`);
  return program;
}

function pageOfReplay() {
  const data = JSON.stringify(inMemory).replaceAll('<', '\\u003c');
  const code = readFileSync(here('replay_in_page.js'), 'utf8');
  // Without a doctype, so in quirks mode like the program's page. The result leaves the browser as
  // base64, which is the same text in markup and outside it.
  return `<html><head><meta charset="utf-8"><title>still</title></head><body><script>
${code}
const bytes = new TextEncoder().encode(JSON.stringify({
  mode: document.compatMode, results: replay(${data}) }));
let text = '';
for (const byte of bytes) text += String.fromCharCode(byte);
document.body.innerHTML = '<pre>' + btoa(text) + '</pre>';
</script></body></html>`;
}

function replayInBrowser() {
  const folder = mkdtempSync(join(tmpdir(), 'kitbay-tree-'));
  try {
    const page = join(folder, 'page.html');
    writeFileSync(page, pageOfReplay());
    const run = spawnSync(browserProgram(), [
      ...(process.getuid() === 0 ? ['--no-sandbox'] : []), '--disable-gpu',
      '--host-resolver-rules=MAP * ~NOTFOUND', '--no-first-run', '--disable-extensions',
      '--disable-background-networking', '--disable-component-update',
      `--user-data-dir=${join(folder, 'profile')}`, '--dump-dom', pathToFileURL(page).href,
    ], { encoding: 'utf8', timeout: 250_000, killSignal: 'SIGKILL', maxBuffer: 1 << 28 });
    const result = /<pre>([A-Za-z0-9+/=]+)<\/pre>/.exec(run.stdout ?? '');
    assert.ok(result, `the browser gave no result (${run.error ?? run.status}): ${run.stderr}`);
    return JSON.parse(Buffer.from(result[1], 'base64').toString('utf8'));
  } finally {
    rmSync(folder, { recursive: true, force: true, maxRetries: 20, retryDelay: 100 });
  }
}

describe('the tree of a real browser', () => {
  let seen;
  before(() => { seen = replayInBrowser(); });

  test('the page is in quirks mode', () => assert.equal(seen.mode, 'BackCompat'));
  test('every case was replayed', () => {
    assert.ok(inMemory.cases.length > 100);
    assert.equal(seen.results.length, inMemory.cases.length);
  });
  inMemory.cases.forEach(({ name, tree, texts }, i) => {
    test(name, () => {
      assert.equal(seen.results[i].tree.join('\n'), tree.join('\n'));
      assert.deepEqual(seen.results[i].texts, texts);
    });
  });
});
