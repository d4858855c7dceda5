#!/usr/bin/env bash
# install-node-modules.sh FOLDER: installs the folder's npm packages. Runs in the build root.
set -euo pipefail

# Another ./run may install them at the same time.
mkdir -p build
exec {lock}>"build/.npm-${1//\//-}.lock"
flock "$lock"

cd "$1"
# npm ci is slow even with nothing to do.
if ! cmp --silent package-lock.json node_modules/.installed-lock.json; then
	npm ci --no-audit --no-fund
	cp package-lock.json node_modules/.installed-lock.json
fi
