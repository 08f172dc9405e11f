#include "app/TaggedStringList.h"

void TaggedStringList::insert(int position, const QString& text, std::int32_t tag) {
    if (position < 0) position = 0;
    if (position >= count()) {
        add(text, tag);
        return;
    }
    items_.insert(items_.begin() + position, Item{text, tag});
}

void TaggedStringList::remove(int position) {
    if (valid(position)) items_.erase(items_.begin() + position);
}

std::vector<TaggedStringList::Item>
TaggedStringList::takeIf(const std::function<bool(const Item&)>& test) {
    std::vector<Item> taken;
    auto kept = items_.begin();
    for (auto it = items_.begin(); it != items_.end(); ++it) {
        if (test(*it)) {
            taken.push_back(std::move(*it));
            continue;
        }
        if (kept != it) *kept = std::move(*it);
        ++kept;
    }
    items_.erase(kept, items_.end());
    return taken;
}

QString TaggedStringList::text(int position) const {
    return valid(position) ? items_[static_cast<std::size_t>(position)].text : QString();
}

std::int32_t TaggedStringList::tag(int position) const {
    return valid(position) ? items_[static_cast<std::size_t>(position)].tag : 0;
}

void TaggedStringList::setTag(int position, std::int32_t tag) {
    if (valid(position)) items_[static_cast<std::size_t>(position)].tag = tag;
}

void TaggedStringList::setText(int position, const QString& text) {
    if (valid(position)) items_[static_cast<std::size_t>(position)].text = text;
}
