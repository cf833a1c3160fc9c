#!/usr/bin/env bash
# The README shows the example programs; fails if a shown block differs from
# its file under examples/ or an example is not shown.
# Usage: check_readme_examples.sh <source dir>
set -euo pipefail
source=$1
status=0
for file in "$source"/examples/*.c; do
  name=examples/$(basename "$file")
  shown=$(awk -v name="\`$name\`:" '
    $0 == name {found = 1; next}
    found && /^```c$/ {inside = 1; next}
    inside && /^```$/ {exit}
    inside {print}' "$source/README.md")
  if [ -z "$shown" ]; then
    echo "$name is not shown in the README"; status=1
  elif ! diff <(echo "$shown") "$file" > /dev/null; then
    echo "the README's $name differs from the file:"; diff <(echo "$shown") "$file" | head -10; status=1
  fi
done
[ $status -eq 0 ] && echo "the README shows every example as it is"
exit $status
