// The DOCHOSTUIFLAG_ flags of a host, as far as they show on a page.
const kDialog = 0x1;
const kNo3dBorder = 0x4;
const kNoScrollBars = 0x8;
const kNo3dOuterBorder = 0x200000;

/** For a host that says nothing about a border. */
export const kNoBorder = kNo3dBorder;

/** What the control adds to the style sheets of a page for a host with these flags. */
export function hostSheet(flags) {
  const rules = [];
  if (!(flags & (kNo3dBorder | kNo3dOuterBorder))) rules.push(':root{box-sizing:border-box;border:2px inset}');
  if (flags & kDialog) rules.push('body{user-select:none}');
  if (flags & kNoScrollBars) rules.push(':root,body{overflow:hidden!important}');
  return rules.join('');
}
