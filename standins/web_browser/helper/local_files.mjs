import fs from 'node:fs/promises';
import os from 'node:os';
import path from 'node:path';

const kContentTypes = {
  '.html': 'text/html', '.htm': 'text/html', '.css': 'text/css', '.js': 'text/javascript',
  '.gif': 'image/gif', '.png': 'image/png', '.jpg': 'image/jpeg', '.jpeg': 'image/jpeg',
  '.bmp': 'image/bmp', '.ico': 'image/x-icon', '.svg': 'image/svg+xml', '.txt': 'text/plain',
};

/** The content type for a file's name. */
export function contentTypeOf(file) {
  return kContentTypes[path.extname(file).toLowerCase()] ?? 'application/octet-stream';
}

/** Whether a URL names something that a page can show, according to its file name. */
export function isDocument(url) {
  const file = toWindowsPath(url);
  return file === undefined || path.extname(file) === '' || contentTypeOf(file) !== 'application/octet-stream';
}

/** "C:\a b\c.html" as "file:///C:/a%20b/c.html"; any other text unchanged. */
export function toUrl(target) {
  if (!/^[a-z]:[\\/]/i.test(target)) return target;
  const parts = target.split(/[\\/]/);
  return `file:///${[parts[0], ...parts.slice(1).map(encodeURIComponent)].join('/')}`;
}

/**
 * "file:///C:/a%20b/c.html" as "C:\a b\c.html"; undefined for anything that is not a file on a
 * local drive.
 */
export function toWindowsPath(url) {
  const match = /^file:\/\/\/([a-z]:)((?:\/[^?#]*)?)/i.exec(url);
  if (match === null) return undefined;
  try {
    return match[1] + decodeURIComponent(match[2]).replaceAll('/', '\\');
  } catch {
    return undefined;
  }
}

/** Finds the files for Windows names through the drive letters of a Wine prefix. */
export class LocalFiles {
  #drives;

  constructor(prefix = process.env.WINEPREFIX || path.join(os.homedir(), '.wine')) {
    this.#drives = path.join(prefix, 'dosdevices');
  }

  /** The bytes of a file with a Windows name, or undefined if there is no such file. */
  async read(windowsPath) {
    const file = await this.#resolve(windowsPath);
    return file === undefined ? undefined : fs.readFile(file).catch(() => undefined);
  }

  async #resolve(windowsPath) {
    const [drive, ...names] = windowsPath.split(/[\\/]+/);
    let folder = path.join(this.#drives, drive.toLowerCase());
    for (const name of names) {
      const actual = await this.#actualName(folder, name);
      if (actual === undefined) return undefined;
      folder = path.join(folder, actual);
    }
    return folder;
  }

  /**
   * The name as it is in the folder: an exact match takes precedence over one that differs in case.
   */
  async #actualName(folder, name) {
    if (name === '.' || name === '..') return name;
    const entries = await fs.readdir(folder).catch(() => []);
    if (entries.includes(name)) return name;
    return entries.find((entry) => entry.toLowerCase() === name.toLowerCase());
  }
}
