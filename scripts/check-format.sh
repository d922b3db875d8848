#!/usr/bin/env bash
# Checks the C++ sources against .clang-format, with clang-format 14 as other versions differ.
#
#   scripts/check-format.sh [--fix]     --fix formats the files instead
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

tool=
for name in clang-format-14 clang-format; do
  if command -v "$name" >/dev/null && "$name" --version | grep -q 'version 14\.'; then
    tool=$name
    break
  fi
done
if [ -z "$tool" ]; then
  echo "check-format.sh: needs clang-format 14 (scripts/install-packages.sh test)" >&2
  exit 1
fi

mode=(--dry-run -Werror)
case "${1:-}" in
  "") ;;
  --fix) mode=(-i) ;;
  *)
    echo "Usage: $0 [--fix]" >&2
    exit 2
    ;;
esac

# Tracked files and new ones that are not ignored; a deleted file may still be listed.
files=()
while IFS= read -r -d '' file; do
  if [ -f "$file" ]; then files+=("$file"); fi
done < <(git ls-files -z --cached --others --exclude-standard -- '*.h' '*.cpp')
if [ ${#files[@]} -eq 0 ]; then
  echo "check-format.sh: found no source files" >&2
  exit 1
fi
"$tool" --style=file "${mode[@]}" "${files[@]}"
echo "${#files[@]} files looked at."
