// What lies beside the installer and lets a user check it: the same bytes from the same sources, a
// checksum, a list of its parts, and a signature if there is a key.
import assert from 'node:assert/strict';
import { execFile } from 'node:child_process';
import fs from 'node:fs';
import os from 'node:os';
import path from 'node:path';
import { after, before, test } from 'node:test';
import { promisify } from 'node:util';
import { fileURLToPath } from 'node:url';

const root = fileURLToPath(new URL('../..', import.meta.url)).replace(/\/$/, '');
const scratch = fs.mkdtempSync(path.join(os.tmpdir(), 'kitbay-release-'));
const unsigned = path.join(scratch, 'unsigned');
const kDate = '1700000000'; // 14 November 2023, 22:13:20 UTC
const libraries = fs
  .readFileSync(path.join(root, 'installer/libraries.tsv'), 'utf8')
  .trimEnd()
  .split('\n')
  .map((line) => line.split('\t'))
  .map(([name, debianPackage, licence]) => ({ name, debianPackage, licence }));

const run = async (program, words, options) => (await promisify(execFile)(program, words, options)).stdout;
const makeInstaller = (folder, environment = {}) =>
  run(path.join(root, 'tools/make_installer'), [folder], {
    env: { ...process.env, SOURCE_DATE_EPOCH: kDate, ...environment },
  });
/** Whether a program that failed said so, on either stream: versions of osslsigncode differ in theirs. */
const says = (pattern) => ({ stdout, stderr }) => pattern.test(stdout + stderr);
const setup = (folder) => path.join(folder, 'KitbaySetup.exe');

before(() => makeInstaller(unsigned));
after(() => fs.rmSync(scratch, { recursive: true }));

test('the same sources make the same installer, in another folder, at another time, in another time zone and locale', async () => {
  const again = path.join(scratch, 'a folder with a longer name');
  const images = path.join(root, 'build/win32/page');
  for (const name of fs.readdirSync(images).filter((name) => name.endsWith('.gif'))) {
    fs.utimesSync(path.join(images, name), new Date(), new Date());
  }
  await makeInstaller(again, { TZ: 'Pacific/Auckland', LC_ALL: 'C' });
  for (const name of fs.readdirSync(unsigned).filter((name) => name !== 'files')) {
    assert.ok(fs.readFileSync(path.join(unsigned, name)).equals(fs.readFileSync(path.join(again, name))), name);
  }
});

test('the checksum beside the installer is its own', async () => {
  const check = () => run('sha256sum', ['--check', 'KitbaySetup.exe.sha256'], { cwd: unsigned });
  assert.equal(await check(), 'KitbaySetup.exe: OK\n');
});

test('the list beside the installer is the one that it installs, and names every part once', () => {
  const text = fs.readFileSync(path.join(unsigned, 'KitbaySetup.spdx.json'), 'utf8');
  assert.equal(fs.readFileSync(path.join(unsigned, 'files/Kitbay.spdx.json'), 'utf8'), text);
  const list = JSON.parse(text);
  assert.equal(list.spdxVersion, 'SPDX-2.3');
  assert.equal(list.creationInfo.created, '2023-11-14T22:13:20Z');
  const [kitbay, ...parts] = list.packages;
  assert.equal(kitbay.name, 'Kitbay');
  assert.deepEqual(
    parts.map(({ name, licenseDeclared: licence }) => ({ name, licence })),
    libraries.map(({ name, licence }) => ({ name, licence })),
  );
  for (const part of list.packages) {
    assert.match(part.SPDXID, /^SPDXRef-[A-Za-z0-9.-]+$/);
    assert.match(part.versionInfo, /^(\d+:)?\d+\.\d/, part.name);
  }
  assert.deepEqual(
    list.relationships.map((relation) => Object.values(relation).join(' ')),
    [
      `SPDXRef-DOCUMENT DESCRIBES ${kitbay.SPDXID}`,
      ...parts.map(({ SPDXID }) => `${kitbay.SPDXID} CONTAINS ${SPDXID}`),
    ],
  );
});

test('every library that the programs are linked with is in the list, with its licence', async () => {
  const licences = fs.readFileSync(path.join(unsigned, 'files/Licences of libraries.txt'), 'utf8');
  for (const preset of ['win32', 'win64']) {
    const linked = await run('ninja', ['-t', 'query', 'src/app/Kitbay.exe'], { cwd: path.join(root, 'build', preset) });
    const names = [...linked.matchAll(/\/lib\/lib(\w+)(?:\.dll)?\.a$/gm)].map(([, name]) => name);
    assert.ok(names.includes('pugixml'), `${preset}: ${linked}`);
    for (const name of names) {
      const listed = libraries.find(({ debianPackage }) => debianPackage.startsWith(`lib${name}-`));
      assert.ok(listed, `${preset}: ${name} is linked and not listed`);
      assert.ok(licences.includes(`==== ${listed.name}\r\n`), listed.name);
    }
  }
});

test('without a key nothing is signed, and half a key is refused', async () => {
  await assert.rejects(run('osslsigncode', ['verify', '-in', setup(unsigned)]), says(/No signature found/));
  await assert.rejects(
    makeInstaller(path.join(scratch, 'half'), { KITBAY_SIGNING_CERTIFICATE: 'certificate.pem' }),
    /KITBAY_SIGNING_KEY: is not set/,
  );
});

test('with a key, installer and programs are signed with it', async () => {
  const signed = path.join(scratch, 'signed');
  const certificate = path.join(scratch, 'certificate.pem');
  const key = path.join(scratch, 'key.pem');
  await run('openssl', [
    'req', '-x509', '-newkey', 'rsa:2048', '-nodes', '-keyout', key, '-out', certificate, '-days', '2',
    '-subj', '/CN=Kitbay test', '-addext', 'extendedKeyUsage=codeSigning', '-addext', 'keyUsage=digitalSignature',
  ]);
  await makeInstaller(signed, { KITBAY_SIGNING_CERTIFICATE: certificate, KITBAY_SIGNING_KEY: key });
  const programs = ['32', '64'].flatMap((bits) => ['Kitbay.exe', 'OvalinkSuite.dll'].map((name) => `files/${bits}/${name}`));
  const verify = (file) => run('osslsigncode', ['verify', '-CAfile', certificate, '-in', file]);
  for (const name of ['KitbaySetup.exe', ...programs]) {
    const said = await verify(path.join(signed, name));
    assert.match(said, /Subject: \/?(CN ?= ?)Kitbay test/, name);
  }
  const changed = path.join(scratch, 'changed.exe');
  const bytes = fs.readFileSync(setup(signed));
  bytes[bytes.length >> 1] ^= 1;
  fs.writeFileSync(changed, bytes);
  await assert.rejects(verify(changed), says(/Signature verification: failed/));
});
