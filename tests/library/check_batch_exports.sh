#!/usr/bin/env bash
# Checks the dynamic symbol table of a file of the batch library: it exports
# exactly the functions that kvtgen_batch.h declares.
# Usage: check_batch_exports.sh <library> <kvtgen_batch.h>
set -euo pipefail
expected=$(grep -o 'kvtgBatch[A-Za-z0-9_]*(' "$2" | tr -d '(' | sort -u)
actual=$(nm -D --defined-only "$1" | awk '$2 ~ /^[TtWwVvDdBbRrIi]$/ {print $3}' | sed 's/@.*//' | sort -u)
if [ "$expected" != "$actual" ]; then
  echo "exports of $1 differ from kvtgen_batch.h:"; diff <(echo "$expected") <(echo "$actual") | head -20; exit 1
fi
echo "$(echo "$actual" | wc -l) functions exported, as kvtgen_batch.h declares"
