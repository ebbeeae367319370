/** The system's colours in a fresh Windows, by their names in style sheets, in lower case. */
export const kStandardColors = {
  activeborder: '#b4b4b4', activecaption: '#99b4d1', appworkspace: '#ababab', background: '#000000',
  buttonface: '#f0f0f0', buttonhighlight: '#ffffff', buttonshadow: '#a0a0a0', buttontext: '#000000',
  captiontext: '#000000', graytext: '#6d6d6d', highlight: '#0078d7', highlighttext: '#ffffff',
  inactiveborder: '#f4f7fc', inactivecaption: '#bfcddb', inactivecaptiontext: '#000000',
  infobackground: '#ffffe1', infotext: '#000000', menu: '#f0f0f0', menutext: '#000000',
  scrollbar: '#c8c8c8', threeddarkshadow: '#696969', threedface: '#f0f0f0', threedhighlight: '#ffffff',
  threedlightshadow: '#e3e3e3', threedshadow: '#a0a0a0', window: '#ffffff', windowframe: '#646464',
  windowtext: '#000000',
};
