#!/usr/bin/env bash
# install-node-modules.sh: what the end-to-end tests need from npm. Runs in the build root.
set -euo pipefail

cd tests/obs
# npm ci takes its time even when there is nothing to do.
if ! cmp --silent package-lock.json node_modules/.installed-lock.json; then
	npm ci --no-audit --no-fund
	cp package-lock.json node_modules/.installed-lock.json
fi
