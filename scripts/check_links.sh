#!/usr/bin/env bash
# Checks that every relative link in the Markdown documents leads to a file that is
# there and, where it names a heading, that the heading is.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# The anchor that a heading gets: lower case, punctuation dropped, blanks to hyphens.
anchors() {
  sed -n 's/^##* //p' "$1" | tr '[:upper:]' '[:lower:]' | sed -e 's/[^a-z0-9 _-]//g' -e 's/ /-/g'
}

bad=0
while IFS= read -r page; do
  while IFS= read -r target; do
    case $target in
      http://* | https://* | mailto:*) continue ;;
    esac
    file=${target%%#*}
    anchor=
    [[ $target == *#* ]] && anchor=${target#*#}
    full=$page
    [ -n "$file" ] && full=$(dirname "$page")/$file
    if [ ! -e "$full" ]; then
      echo "$page: no such file: $target" >&2
      bad=1
    elif [ -n "$anchor" ] && ! anchors "$full" | grep -qxF -- "$anchor"; then
      echo "$page: no such heading: $target" >&2
      bad=1
    fi
  done < <(sed -e '/^```/,/^```/d' -e 's/`[^`]*`//g' "$page" | grep -o '](\([^) ]*\))' | sed -e 's/^](//' -e 's/)$//' || true)
done < <(git ls-files '*.md')
exit $bad
