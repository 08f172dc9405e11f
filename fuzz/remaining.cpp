// The three remaining lists a show leaves for the next one. The input holds "remain.lst",
// "remain-t.lst" and "remain-d.lst" one after the other, parted by form feeds; what was read
// is saved and read again, and must come back the same.
#include "FormsSupport.h"

#include <utility>
#include <vector>

namespace {

using Items = std::vector<std::pair<QString, std::int32_t>>;

Items Flat(const TaggedStringList& list) {
    Items items;
    for (const TaggedStringList::Item& item : list.items())
        items.emplace_back(item.text, item.tag);
    return items;
}

struct Pool {
    QString current, fullName, source, folder;
    std::int32_t tag = 0;
    Items images, titles, descriptions;
    bool operator==(const Pool&) const = default;
};

Pool Read(frmSlideShow* show) {
    show->ImageList.clear();
    show->ImageTitles.clear();
    show->ImageDescriptions.clear();
    show->LoadRemainingList(show->RemainingListPath[0]);
    return {show->CurrentImage,        show->CaptionFullName,        show->CaptionSource,
            show->CurrentRandomFolder, show->CurrentImageTag,        Flat(show->ImageList),
            Flat(show->ImageTitles),   Flat(show->ImageDescriptions)};
}

} // namespace

// The application and the windows are built before the first input, outside its time limit.
extern "C" int LLVMFuzzerInitialize(int*, char***) {
    fuzz::Show();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    frmSlideShow* show = fuzz::Show();
    const QList<QByteArray> parts = fuzz::Bytes(data, size).split('\f');
    for (int i = 0; i < 3; ++i) {
        if (i < parts.size())
            fuzz::WriteFile(show->RemainingListPath[i], parts[i]);
        else
            QFile::remove(show->RemainingListPath[i]);
    }
    const Pool first = Read(show);
    show->PoolLoaded = true;
    show->SaveRemainingList();
    fuzz::Check(Read(show) == first);
    return 0;
}
