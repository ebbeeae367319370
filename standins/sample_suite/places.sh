# Sourced by lay_out and remove: where the sample suite is in the Wine prefix.
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
source "$root/tools/wine_environment.sh"

drive_c=$WINEPREFIX/drive_c
uninstall_key='Microsoft\Windows\CurrentVersion\Uninstall\Tessel'
shell_folders_key='Software\Microsoft\Windows\CurrentVersion\Explorer\Shell Folders'
# Names the installation folder below drive C that lay_out created, so that nothing else is ever
# removed.
laid_out=$WINEPREFIX/.sample_suite

# The Windows form of a folder below drive C.
windows_path() { echo "C:\\${1//\//\\}"; }

# program_bits PROGRAM: 32 or 64, according to the header of a Windows program.
program_bits() {
  local header machine
  header=$(od -An -t u4 -j 60 -N 4 "$1")
  machine=$(od -An -t x2 -j $((header + 4)) -N 2 "$1")
  case $machine in
  *014c) echo 32 ;;
  *8664) echo 64 ;;
  *) echo "$1 is for machine$machine" >&2 && return 1 ;;
  esac
}

# uninstall_key_for BITS: where programs of that bitness find the uninstall entry. 32-bit programs
# have their own view on a 64-bit Windows.
uninstall_key_for() {
  if [[ $1 == 32 && $KITBAY_BITS == 64 ]]; then
    echo "SOFTWARE\\Wow6432Node\\$uninstall_key"
  else
    echo "SOFTWARE\\$uninstall_key"
  fi
}

# Removes the uninstall entry, wherever it is; as lines of a registry file.
forget_uninstall_entry() {
  printf '[-HKEY_LOCAL_MACHINE\\SOFTWARE\\%s]\n\n' "$uninstall_key" "Wow6432Node\\$uninstall_key"
}

# The user's application data folder according to the registry; empty if it has none.
registered_app_data() {
  awk -v section="[${shell_folders_key//\\/\\\\\\\\}]" '
    /^\[/ { inside = index($0, section) == 1 }
    inside && /^"AppData"="/ {
      value = substr($0, 12, length($0) - 12)
      gsub(/\\\\/, "\\", value)
      print value
    }' "$WINEPREFIX/user.reg"
}

# The same as a Unix path, or the usual place if the registry has none.
app_data_folder() {
  local registered user
  registered=$(registered_app_data)
  if [[ $registered == [Cc]:\\* ]]; then
    registered=${registered:3}
    echo "$drive_c/${registered//\\//}"
    return
  fi
  for user in "$drive_c"/users/*; do
    [[ ${user##*/} == Public ]] || { echo "$user/AppData/Roaming"; return; }
  done
}

# forget_classes BUILD: removes everything that the component libraries of a build can register; as
# lines of a registry file.
forget_classes() {
  local progid clsid
  while read -r progid clsid; do
    printf '[-HKEY_CLASSES_ROOT\\%s]\n\n' "$progid" "CLSID\\$clsid"
  done < <(cat "$1"/standins/{component_libraries,update_source}/classes.txt)
}

# Imports the registry file on standard input, with a single start of Wine. By its path, regedit starts without
# another program of Wine that looks for it.
import_registry() {
  local file
  file=$(mktemp "$WINEPREFIX/registry.XXXXXX")
  { echo REGEDIT4; echo; cat; } >"$file"
  timeout 600 "$wine" 'C:\windows\regedit.exe' /S "$file" </dev/null
  rm -f "$file"
}

remove_files() {
  local folder
  if [[ -f $laid_out ]]; then
    folder=$(<"$laid_out")
    chmod -R u+w "$drive_c/$folder" 2>/dev/null || true
    rm -rf "${drive_c:?}/${folder:?}"
  fi
  rm -rf "$(app_data_folder)/Ovalink" "$laid_out"
}
