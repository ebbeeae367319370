// What a page may load, according to the host's DISPID_AMBIENT_DLCONTROL. Whatever that says, only
// files on local drives are ever served: no request of a page leaves the machine.

const kImages = 0x10;
const kVideos = 0x20;
const kBackgroundSounds = 0x40;
const kNoScripts = 0x80;
const kNoActiveX = 0x200 | 0x400;
const kNoFrames = 0x1000 | 0x80000;
const kNoClientPull = 0x20000000;

/** The flags of a host that does not answer the ambient property. */
export const kDefaultFlags = kImages | kVideos | kBackgroundSounds;

/** Whether scripts of the page run. */
export function scriptsRun(flags) {
  return (flags & kNoScripts) === 0;
}

/** Whether the page may load another one by a refresh in its markup. */
export function mayRefresh(flags) {
  return (flags & kNoClientPull) === 0;
}

/** The reason why a resource of a page is refused, or undefined if it may load. */
export function refusal(flags, resourceType, isLocalFile) {
  if (!isLocalFile) return 'not a local file';
  switch (resourceType) {
    case 'Image':
      return flags & kImages ? undefined : 'images are off';
    case 'Media':
      return flags & (kVideos | kBackgroundSounds) ? undefined : 'media are off';
    case 'Script':
      return flags & kNoScripts ? 'scripts are off' : undefined;
    case 'Document':
      return flags & kNoFrames ? 'frames are off' : undefined;
    case 'Stylesheet':
    case 'Font':
      return undefined;
    default:
      return `${resourceType} is never loaded`;
  }
}

/** The same rules for what causes no request, such as a frame whose content is in its markup. */
export function contentSecurityPolicy(flags) {
  const rules = ["connect-src 'none'", "form-action 'none'"];
  if (flags & kNoScripts) rules.push("script-src 'none'");
  if (flags & kNoFrames) rules.push("frame-src 'none'");
  if (flags & kNoActiveX) rules.push("object-src 'none'");
  return rules.join('; ');
}
