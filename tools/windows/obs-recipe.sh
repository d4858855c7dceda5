#!/usr/bin/env bash
# obs-recipe.sh TARGET: puts OBS's own Windows binaries of the oldest version that the module accepts, and their headers,
# into TARGET. The npm package that passes them on lacks a few headers, which libobs-dev has. Runs in the developers' root.
set -euo pipefail

target=$1
cp tools/windows/obs/package.json tools/windows/obs/package-lock.json "$target"
(cd "$target" && npm ci --ignore-scripts --no-audit --no-fund)

package=$target/node_modules/noobs
mv "$package"/dist/{bin,data,obs-plugins} "$package/include" "$target"
# Qt of another compiler, which would get in the way of the tests' own.
rm -r "$target"/bin/Qt6*.dll "$target/node_modules"
for header in obs.hpp obs-frontend-api.h util/util.hpp; do
	cp "/usr/include/obs/$header" "$target/include/$header"
done
