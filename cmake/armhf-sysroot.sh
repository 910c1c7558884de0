#!/bin/bash
# Fills a folder with the armhf libraries that the cross build links and the emulated tests load.
#
#   cmake/armhf-sysroot.sh FOLDER
#
# The packages come from the machine's own Debian mirror, through an apt configuration of their own: the machine's
# package state is neither read nor touched, and nothing is installed. FOLDER/shlibs says which package has which
# library, for the dependencies of our own packages. Adding armhf to dpkg instead would tie the machine to both
# architectures having every update on the same day.
set -euo pipefail
export LC_ALL=C

packages=(libc6-dev libstdc++6 libxml2-dev)

if [ $# -ne 1 ]; then
  echo "usage: $0 FOLDER" >&2
  exit 2
fi
mkdir -p "$1"
sysroot=$(cd "$1" && pwd)
stamp=$sysroot/.complete
recipe=$(sha256sum <"$0")

if [ -f "$stamp" ] && [ "$(cat "$stamp")" = "$recipe" ]; then
  exit 0
fi

release=$(. /etc/os-release && echo "${VERSION_CODENAME:?not a released Debian}")
mirror=$(apt-get indextargets --format '$(REPO_URI) $(RELEASE) $(COMPONENT)' 'Created-By: Packages' |
  awk -v release="$release" '!found && $2 == release && $3 == "main" { found = $1 } END { print found }')
if [ -z "$mirror" ]; then
  echo "$0: apt knows no mirror of $release main" >&2
  exit 1
fi

apt=$sysroot.apt
rm -rf "$sysroot" "$apt"
mkdir -p "$sysroot" "$apt"/{lists/partial,cache/archives/partial,parts}
: >"$apt/status"

keyring=/usr/share/keyrings/debian-archive-keyring.gpg
options=arch=armhf
if [ -f "$keyring" ]; then
  options="$options signed-by=$keyring"
fi
echo "deb [$options] $mirror $release main" >"$apt/sources.list"

cat >"$apt/apt.conf" <<CONF
APT::Architecture "armhf";
APT::Architectures { "armhf"; };
APT::Install-Recommends "false";
APT::Sandbox::User "";
Acquire::Languages "none";
Acquire::IndexTargets::deb::Contents-deb::DefaultEnabled "false";
Dir::Etc::sourcelist "$apt/sources.list";
Dir::Etc::sourceparts "$apt/parts";
Dir::Etc::preferences "/dev/null";
Dir::Etc::preferencesparts "$apt/parts";
Dir::State "$apt";
Dir::State::lists "$apt/lists";
Dir::State::status "$apt/status";
Dir::Cache "$apt/cache";
CONF
export APT_CONFIG=$apt/apt.conf

echo "armhf: fetching ${packages[*]} and what they need (not installing them)"
apt-get -qq update
apt-get -qq -y --download-only install "${packages[@]}" >"$apt/log" 2>&1 || {
  cat "$apt/log" >&2
  exit 1
}

count=0
for package in "$apt"/cache/archives/*.deb; do
  dpkg -x "$package" "$sysroot"
  dpkg-deb --info "$package" shlibs >>"$sysroot/shlibs" 2>/dev/null || true
  count=$((count + 1))
done

# An absolute link would lead out of the sysroot and into the machine's own files.
find "$sysroot" -type l -lname '/*' -print0 | while IFS= read -r -d '' link; do
  ln -sfrT "$sysroot$(readlink "$link")" "$link"
done

rm -rf "$apt"
echo "$recipe" >"$stamp"
echo "armhf: $count packages unpacked"
