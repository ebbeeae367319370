# Sourced by the scripts that use Wine, with $root set to the top of the tree: which Wine runs, and
# the prefix that it runs in. KITBAY_BITS says whether that is a 32-bit or a 64-bit Windows, and so
# which build runs there, $windows_build; without it, it is 64. With KITBAY_WOW64, a 64-bit Windows runs
# 32-bit programs as well, as far as Wine does. A WINEPREFIX below build/ is taken as it is; any other is
# the user's own and is left alone.
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
  # Whatever else Wine starts is of 64 bits and passes these libraries over.
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
  echo "KITBAY_BITS is $KITBAY_BITS; it has to be 32 or 64" >&2
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
# Without .NET and HTML engine nobody is asked to install them; no menu entries in the user's home.
export WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d"
# File names are UTF-8 whatever the caller's locale; dates and numbers are set in the prefix.
export LC_ALL=C.UTF-8
# Wine links the user's folders into the home folder, so that it gets one of its own; KITBAY_HOME names
# that of a user who may not write there.
export XAUTHORITY=${XAUTHORITY:-${HOME:-}/.Xauthority}
export HOME=${KITBAY_HOME:-$root/build/home}
mkdir -p "$HOME"

