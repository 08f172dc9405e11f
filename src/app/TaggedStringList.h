#pragma once

#include <QString>
#include <cstdint>
#include <functional>
#include <vector>

// An ordered list of strings with a 32-bit tag per item: the image pool, the queue of images
// to show and their captions all live in lists of this kind. No fixed cap.
class TaggedStringList {
public:
    struct Item {
        QString text;
        std::int32_t tag = 0;
    };

    int count() const { return static_cast<int>(items_.size()); }
    bool isEmpty() const { return items_.empty(); }

    void add(const QString& text, std::int32_t tag = 0) { items_.push_back({text, tag}); }
    // Positions past the end append, as the list boxes did.
    void insert(int position, const QString& text, std::int32_t tag = 0);
    // Out-of-range positions are ignored.
    void remove(int position);
    // Takes out every item the test holds for and gives them back in list order; the rest
    // keep theirs. One pass, where removing them one at a time would move the tail each time.
    std::vector<Item> takeIf(const std::function<bool(const Item&)>& test);
    void clear() { items_.clear(); }

    // Out-of-range positions read as empty text and tag 0.
    QString text(int position) const;
    std::int32_t tag(int position) const;
    void setTag(int position, std::int32_t tag);
    void setText(int position, const QString& text);

    const std::vector<Item>& items() const { return items_; }

private:
    bool valid(int position) const { return position >= 0 && position < count(); }
    std::vector<Item> items_;
};
