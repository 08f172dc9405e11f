#!/usr/bin/env bash
# Writes the demo install folder's "Local" image lists: the drawn pictures in demo/Pictures,
# the photographs of demo/Photos (made by make_demo_photos.sh) and, when the mate-backgrounds
# package is there, its nature photographs. List files hold full paths, so the lists are
# written for the place this checkout lives in; run it again after moving the checkout.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
demo="${1:-$root/demo}"
mkdir -p "$demo/Imagelists"

write_list() {
    local title="$1" folder="$2" list="$3"
    shopt -s nullglob nocaseglob
    local images=("$folder"*.jpg "$folder"*.jpeg "$folder"*.png)
    shopt -u nocaseglob
    if [ ${#images[@]} -eq 0 ]; then
        rm -f "$list"
        return
    fi
    local tmp
    tmp="$(mktemp "$list.XXXXXX")"
    {
        printf '%s\r\n' "Imagelist for Ferrin's Tessaview" "------------------------------" \
            TITLE "$title" PATH "$folder" "COUNT,${#images[@]}" "LOCALORWEB,Local" \
            "LASTSCAN,$(date +%d/%m/%Y)" "SCANINTERVAL,4000" "OPTION,RECURSE==False" \
            "OPTION,none==none" "OPTION,none==none" "OPTION,none==none" "OPTION,none==none" IMAGES
        for image in "${images[@]}"; do printf 'IMAGE>%s\r\n' "$image"; done
    } >"$tmp"
    mv "$tmp" "$list"
}

write_list "Demo pictures" "$demo/Pictures/" "$demo/Imagelists/Pictures_1.tvl"
write_list "Demo photographs" "$demo/Photos/" "$demo/Imagelists/Photos_1.tvl"
write_list "Nature photographs" "/usr/share/backgrounds/mate/nature/" "$demo/Imagelists/Nature_1.tvl"
