#!/bin/sh
# The README's commands for a machine that may not even have make: installs make with apt-get
# (as root, or through sudo) when it is missing, then runs the Makefile: ./make.sh run
set -e
cd "$(dirname "$0")"
if ! command -v make >/dev/null 2>&1; then
  if [ "$(id -u)" -eq 0 ]; then
    SUDO=""
  elif command -v sudo >/dev/null 2>&1; then
    SUDO=sudo
  else
    echo "make.sh: make is missing: install it as root (apt-get install make) or install sudo" >&2
    exit 1
  fi
  echo "Installing: make"
  $SUDO apt-get update -qq
  $SUDO env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq make
fi
exec make "$@"
