// How the tests wait, and what they report when something goes wrong.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import path from 'node:path';
import { after, before, describe, test } from 'node:test';
import { setTimeout as delay } from 'node:timers/promises';
import {
  isKitbay, patience, probe, probeWithin, Program, root, rowsOf, run, Suite, threadsOfPrograms, windows,
  wine,
} from './harness.mjs';
import { Patience } from './patience.mjs';

describe('Patience', () => {
  test('asks until the answer is true', async () => {
    const answers = [0, '', 'there', 'never'];
    assert.equal(await new Patience().until('something', () => answers.shift()), 'there');
  });

  test('has one limit for everything that is waited for, and says what was not in time', async () => {
    const short = new Patience(200);
    assert.equal(await short.until('something', () => short.left < 150), true);
    await assert.rejects(short.until('the end', () => false), /^Error: Not in time: the end$/);
    assert.equal(short.left, 0);
    await assert.rejects(short.until('the end', () => short.awaited('an answer', new Promise(() => {}))),
      /^Error: Not in time: the end \(Not in time: an answer\)$/);
    await assert.rejects(short.awaited('an answer', new Promise(() => {})), /^Error: Not in time: an answer$/);
    short.begin();
    assert.equal(await short.awaited('an answer', Promise.resolve('there')), 'there');
  });

  test('does not hide why a question failed', async () => {
    const patience = new Patience();
    await assert.rejects(patience.until('it', () => Promise.reject(new Error('broken'))), /^Error: broken$/);
    await assert.rejects(patience.awaited('it', Promise.reject(new Error('broken'))), /^Error: broken$/);
  });

  // Although this test is nested, it too has the whole time again.
  test('begins with each test', () => delay(50).then(() => assert.ok(patience.left > 4.9 * 60 * 1000)));
  test('and with the next one', () => assert.ok(patience.left > 4.99 * 60 * 1000));
});

describe('A program that is busy', () => {
  // By then the system considers a window to be hanging.
  const kLongMs = 7000;
  let kitbay;
  let page;

  /** Demands that a question waits for the program, and returns the answer. */
  async function isAnsweredAfterwards(ask) {
    kitbay.signal('SIGSTOP');
    let isAnswered = false;
    const answer = ask().finally(() => (isAnswered = true));
    await delay(kLongMs);
    const wasAnswered = isAnswered;
    kitbay.signal('SIGCONT');
    const value = await answer;
    assert.equal(wasAnswered, false);
    return value;
  }

  before(async () => {
    kitbay = (await Suite.layOut()).start();
    page = await kitbay.page();
    await page.waitFor(`document.querySelectorAll('#installedchannels > div').length === 6`);
  });
  after(() => kitbay.dispose());

  test('is waited for by questions to its windows', async () => {
    const { controls } = (await isAnsweredAfterwards(windows)).find(isKitbay);
    assert.ok(controls.some(({ text }) => text === '&Directories'));
  });

  test('is waited for by reads of its page', async () => {
    const rows = await isAnsweredAfterwards(() => page.eval(rowsOf('installedchannels')));
    assert.equal(rows.length, 6);
  });

  test('is waited for by clicks, even on a disabled button', async () => {
    await isAnsweredAfterwards(() => kitbay.click('#update'));
  });

  test('tells where its threads are, and goes on', async () => {
    const threads = (await threadsOfPrograms()).split('\n\n');
    const waitsForMessages = /\\Kitbay\.exe\):\s+Backtrace:\s+=>0 0x\w+ in win32u /;
    assert.ok(threads.some((thread) => waitsForMessages.test(thread)), threads.join('\n\n'));
    assert.ok(threads.every((thread) => /\\(Kitbay|e2e_probe)\.exe\)/.test(thread)), threads.join('\n\n'));
    await kitbay.click('#installed');
  });

  test('gets a button pressed as soon as it has one', async (t) => {
    assert.equal(await kitbay.close(), 0);
    const pressing = probe('press', 'Kitbay', '&Close');
    const next = (await Suite.layOut()).start();
    t.after(() => next.dispose());
    assert.equal(await pressing, true);
    assert.equal(await next.ended(), 0);
  });
});

describe('The probe', () => {
  const kUnanswered = ['press', 'Nobody', 'OK'];

  test('answers a question while another one waits', async () => {
    let giveUp;
    const givenUp = new Promise((_, reject) => (giveUp = () => reject(new Error('given up'))));
    const limit = { left: 0, awaited: (what, promise) => Promise.race([promise, givenUp]) };
    const waiting = probeWithin(limit, ...kUnanswered);
    await windows();
    giveUp();
    await assert.rejects(waiting, /^Error: given up$/);
  });

  test('answers again after a question was given up', async () => {
    await assert.rejects(probeWithin(new Patience(100), ...kUnanswered), /^Error: Not in time/);
    await windows();
  });

  test('answers again after Wine has ended', async () => {
    await Promise.all([windows(), windows()]);
    // Before this process can notice it.
    execFileSync(path.join(root, 'tools/wine_prefix'), ['--stop']);
    await windows();
  });
});

describe('What a program prints when it fails is reported', () => {
  const kSaid = /ended with 3\nthis went wrong\nand this$/;

  test('by a program of this system', () =>
    assert.rejects(run('sh', ['-c', 'echo this went wrong; echo and this >&2; exit 3']), kSaid));

  test('by a Windows program', () =>
    assert.rejects(wine('cmd', '/c', 'echo this went wrong&echo and this>&2&exit 3'), kSaid));

  test('by the probe', () => assert.rejects(probe('value', 'none', 'none'), /^Error: value none none: no value: 2$/));

  test('by a program that ends before it has a page', async (t) => {
    const none = Program.start('no such program');
    t.after(() => none.dispose());
    await assert.rejects(none.page(), /^Error: no such program has ended with \d+/);
  });
});
