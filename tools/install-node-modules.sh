#!/usr/bin/env bash
# install-node-modules.sh FOLDER: what the programs in this folder need from npm. Runs in the build root.
set -euo pipefail

cd "$1"
# npm ci takes its time even when there is nothing to do.
if ! cmp --silent package-lock.json node_modules/.installed-lock.json; then
	npm ci --no-audit --no-fund
	cp package-lock.json node_modules/.installed-lock.json
fi
