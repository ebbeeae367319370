# Sourced by the scripts that use Wine, with $root set to the top of the tree: which Wine runs, and
# the prefix that it runs in. A WINEPREFIX below build/ is taken as it is; any other is the user's
# own and is left alone.
case "${WINEPREFIX:-}" in
"$root"/build/*) ;;
*) WINEPREFIX=$root/build/wine ;;
esac
export WINEPREFIX
export WINEARCH=win64
export WINEDEBUG=${WINEDEBUG:--all}
# Without .NET and HTML engine nobody is asked to install them; no menu entries in the user's home.
export WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d"
# File names are UTF-8 whatever the caller's locale; dates and numbers are set in the prefix.
export LC_ALL=C.UTF-8
# Wine links the user's folders into the home folder, so that it gets one of its own.
export XAUTHORITY=${XAUTHORITY:-${HOME:-}/.Xauthority}
export HOME=$root/build/home
mkdir -p "$HOME"

wine=
wineserver=
for candidate in /usr/lib/wine/wine64 wine64 wine; do
  if command -v "$candidate" >/dev/null; then wine=$candidate && break; fi
done
for candidate in /usr/lib/wine/wineserver wineserver; do
  if command -v "$candidate" >/dev/null; then wineserver=$candidate && break; fi
done
