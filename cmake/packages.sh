# Sourced by ./demo and ./check: installs the Debian packages that are not there yet.
#
#   need_packages PACKAGE...

need_packages() {
  local package missing=() as_root=()
  for package in "$@"; do
    if [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" != installed ]; then
      missing+=("$package")
    fi
  done
  if [ ${#missing[@]} -eq 0 ]; then
    return 0
  fi

  echo "Installing with apt-get: ${missing[*]}"
  if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null; then
      echo "This needs root, and there is no sudo: as root, run  apt-get install ${missing[*]}" >&2
      return 1
    fi
    as_root=(sudo)
  fi
  "${as_root[@]}" apt-get -qq update
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get -qq -y -o Dpkg::Use-Pty=0 --no-install-recommends install "${missing[@]}" >/dev/null
}

build_packages=(cmake g++ googletest libcli11-dev libxml2-dev ninja-build nlohmann-json3-dev)
