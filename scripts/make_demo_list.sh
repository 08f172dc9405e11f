#!/usr/bin/env bash
# Writes the demo install folder's "Local" image list for the pictures in demo/Pictures. List
# files hold full paths, so the list is written for the place this checkout lives in; run it
# again after moving the checkout.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
demo="${1:-$root/demo}"
pictures="$demo/Pictures/"
list="$demo/Imagelists/Pictures_1.tvl"
mkdir -p "$demo/Imagelists"

shopt -s nullglob nocaseglob
images=("$pictures"*.jpg "$pictures"*.jpeg "$pictures"*.png)
shopt -u nocaseglob

tmp="$(mktemp "$list.XXXXXX")"
{
    printf '%s\r\n' "Imagelist for Ferrin's Tessaview" "------------------------------" \
        TITLE "Demo pictures" PATH "$pictures" "COUNT,${#images[@]}" "LOCALORWEB,Local" \
        "LASTSCAN,$(date +%d/%m/%Y)" "SCANINTERVAL,4000" "OPTION,RECURSE==False" \
        "OPTION,none==none" "OPTION,none==none" "OPTION,none==none" "OPTION,none==none" IMAGES
    for image in "${images[@]}"; do printf 'IMAGE>%s\r\n' "$image"; done
} >"$tmp"
mv "$tmp" "$list"
