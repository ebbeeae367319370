# Sourced by the scripts that fetch packages without installing them, with $root set to the top of the
# tree: an apt of the tree's own, so that the machine's lists, caches, trust and architectures stay as
# they are, and nobody has to be root.

# own_apt FOLDER ARCHITECTURE ENTRY [PACKAGE_STATE]: has apt keep everything in FOLDER from here on, and
# ask the machine's own Debian mirrors for ARCHITECTURE. ENTRY is "deb" or "deb-src". PACKAGE_STATE is
# the file of installed packages, the machine's own unless named. Reports whether there is a mirror.
own_apt() {
  local folder=$1 architecture=$2 entry=$3 state=${4:-/var/lib/dpkg/status}
  local keyring=/usr/share/keyrings/debian-archive-keyring.gpg options="arch=$architecture" entries
  mkdir -p "$folder"/{lists,cache/archives}/partial
  if [ -f $keyring ]; then options+=" signed-by=$keyring"; fi
  entries=$(apt-get indextargets --format '$(REPO_URI)|$(RELEASE)|$(COMPONENT)|$(ORIGIN)' \
    'Created-By: Packages' | sort -u)
  # Origin is known only once the machine has fetched its lists; without it every entry is tried.
  if grep -q '|Debian$' <<<"$entries"; then entries=$(grep '|Debian$' <<<"$entries"); fi
  awk -F'|' -v start="$entry [$options] " '$3 == "main" { print start $1 " " $2 " main" }' \
    <<<"$entries" >"$folder/sources.list"
  cat >"$folder/apt.conf" <<APT
APT::Architecture "$architecture";
APT::Architectures { "$architecture"; };
APT::Sandbox::User "$(id -un)";
Acquire::Retries "3";
Dir::State "$folder";
Dir::State::lists "$folder/lists";
Dir::State::status "$state";
Dir::Cache "$folder/cache";
Dir::Etc::sourcelist "$folder/sources.list";
Dir::Etc::sourceparts "/dev/null";
APT
  export APT_CONFIG=$folder/apt.conf
  [ -s "$folder/sources.list" ] || { echo 'apt has no Debian mirror here' >&2; return 1; }
}
