#!/usr/bin/env bash
# Installs the given Debian packages, only those still missing. Sourced by
# the other scripts: install_packages PACKAGE...
install_packages() {
  local missing=() p sudo=""
  for p in "$@"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
  done
  ((${#missing[@]})) || return 0
  [ "$(id -u)" -eq 0 ] || sudo="sudo"
  echo "Installing ${#missing[@]} Debian packages: ${missing[*]}"
  $sudo apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}
