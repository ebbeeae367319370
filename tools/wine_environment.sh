# Sourced by the scripts that use Wine, with $root set to the top of the tree. Chooses the Wine to run
# and its prefix. KITBAY_BITS selects a 32-bit or a 64-bit Windows (64 by default), and so the build
# that runs there, $windows_build. With KITBAY_WOW64, a 64-bit Windows also runs 32-bit programs, as far
# as Wine does. A WINEPREFIX below build/ is used as it is; any other belongs to the user and is left
# alone.
export KITBAY_BITS=${KITBAY_BITS:-64}
wine=
wineserver=
wine32=$root/build/deps/wine32
case $KITBAY_BITS in
32)
  own_prefix=$root/build/wine32
  if [ -f "$wine32/.stamp" ]; then
    wine=$wine32/usr/lib/wine/wine
    wineserver=$wine32/usr/lib/wine/wineserver32
  fi
  # Other programs that Wine starts are 64-bit and ignore these libraries.
  export LD_LIBRARY_PATH=$wine32/usr/lib/i386-linux-gnu:$wine32/lib/i386-linux-gnu
  export WINESERVER=$wineserver
  ;;
64)
  own_prefix=$root/build/wine
  if [ -n "${KITBAY_WOW64:-}" ]; then export WINEDLLPATH=$wine32/usr/lib/i386-linux-gnu/wine; fi
  for candidate in /usr/lib/wine/wine64 wine64 wine; do
    if command -v "$candidate" >/dev/null; then wine=$candidate && break; fi
  done
  for candidate in /usr/lib/wine/wineserver wineserver; do
    if command -v "$candidate" >/dev/null; then wineserver=$candidate && break; fi
  done
  ;;
*)
  echo "KITBAY_BITS is $KITBAY_BITS; it must be 32 or 64" >&2
  exit 2
  ;;
esac
case "${WINEPREFIX:-}" in
"$root"/build/*) ;;
*) WINEPREFIX=$own_prefix ;;
esac
export WINEPREFIX
export WINEARCH=win$KITBAY_BITS
windows_build=$root/build/win$KITBAY_BITS
export WINEDEBUG=${WINEDEBUG:--all}
# Disables .NET and the HTML engine, which Wine would otherwise ask to install, and menu entries in the
# user's home folder.
export WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d"
# File names are UTF-8, whatever the caller's locale. The prefix sets the formats of dates and numbers.
export LC_ALL=C.UTF-8
# Wine links the user's folders into the home folder, so it gets its own. KITBAY_HOME names the home
# folder of a user who may not write to that one.
export XAUTHORITY=${XAUTHORITY:-${HOME:-}/.Xauthority}
export HOME=${KITBAY_HOME:-$root/build/home}
mkdir -p "$HOME"

