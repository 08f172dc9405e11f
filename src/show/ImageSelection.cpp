// Which images come next: entries are drawn out of the pool in one of four orders, tested,
// and queued in ShowList with their caption lines in CaptionsList. A drawn entry has left the
// pool, so nothing comes twice until the whole pool has been shown.
#include "app/Common.h"
#include "app/VbNumbers.h"
#include "lists/ImageEntry.h"
#include "platform/Random.h"
#include "prefs/PrefsTable.h"
#include "show/frmSlideShow.h"

#include <algorithm>

namespace {

const QString kUndrawn = QStringLiteral("xxxx");
const QString kNoImages = QStringLiteral("no images");
const QString kExit = QStringLiteral("exit");

// A random position in a list of that many items: Int(count * Rnd), the draw made first.
int RandomIndex(int count) {
    const double r = platform::Rnd();
    return static_cast<int>(vb::Int(count * r));
}

// Whether an item of the pool belongs to a folder key: a web key anywhere in the entry,
// ignoring case; a local key only as the item's own folder, so sub-folders do not count.
bool InFolder(const QString& item, const QString& folder) {
    if (IsWebEntry(folder)) return item.contains(folder, Qt::CaseInsensitive);
    return common::FolderWithSeparator(item) == folder;
}

void TakeItem(TaggedStringList& list, int index, QString& entry, std::int32_t& tag) {
    entry = list.text(index);
    tag = list.tag(index);
    if (!list.isEmpty()) list.remove(index);
}

} // namespace

void frmSlideShow::ChooseNextImage(int numberOfImagesToAdd, bool randomImages, bool randomFolders,
                                   bool newFolderOnly) {
    SetStatus(QStringLiteral("Choosing Next Image"));
    ChosenTitle.clear();
    ChosenLink.clear();

    // A folder that was not shown to its end goes back into the pool.
    if (!RandomFolderFileList.isEmpty()) {
        for (const TaggedStringList::Item& item : RandomFolderFileList.items())
            ImageList.add(item.text, item.tag);
        RandomFolderFileList.clear();
    }

    if (NoValidImages) {
        BugLog(QStringLiteral("There are no valid images - and we are not looking anymore. "
                              "Loading the internal logo image "));
        ShowList.add(QStringLiteral("INTERNAL:0"));
        CaptionsList.add(QStringLiteral(" | "));
        return;
    }

    BugLog(QStringLiteral("Choose Next Image(s) ...."));
    BugLog(QStringLiteral("   NumberOfImagesToAdd = ") + QString::number(numberOfImagesToAdd));
    BugLog(QStringLiteral("         Random Images = ") + prefs::BoolText(randomImages));
    BugLog(QStringLiteral("        Random Folders = ") + prefs::BoolText(randomFolders));
    BugLog(QStringLiteral("         NewFolderOnly = ") + prefs::BoolText(newFolderOnly));
    BugLog(QStringLiteral("   Images in Imagelist = ") + QString::number(ImageList.count()));

    for (int n = 0; n < numberOfImagesToAdd; ++n) {
        bool reloaded = false;
        QString candidate = kUndrawn;
        QString entry;
        std::int32_t tag = 0;
        while (candidate == kUndrawn) {
            if (ImageList.isEmpty() && ShowList.isEmpty()) {
                if (!reloaded) {
                    LoadFullImageList();
                    CurrentRandomFolder = QStringLiteral("xxx");
                    reloaded = true;
                    if (ImageList.isEmpty()) candidate = kNoImages;
                } else {
                    candidate = kNoImages;
                }
            }
            if (candidate == kNoImages) break;

            entry.clear();
            tag = 0;
            const int poolBefore = ImageList.count() + RandomFolderFileList.count();
            if (!randomFolders) {
                if (randomImages)
                    NextRandomImage(entry, tag);
                else
                    NextSequentialImage(entry, tag);
            } else if (!randomImages) {
                NextRandomFolderImage(entry, tag);
            } else if (newFolderOnly) {
                NextImageFromSameRandomFolder(entry, tag);
            } else {
                NextRandomFolderRandomImage(entry, tag);
            }

            if (entry == kExit) {
                candidate = kExit;
            } else if (entry.left(3) == QLatin1String("web")) {
                bool exists = false;
                WebImageExists(entry, CachedImagePath, exists);
                if (exists) {
                    candidate = CachedImagePath;
                    ChosenLink = GetURLfromEntry(entry);
                    ChosenTitle = GetTitleFromEntry(entry);
                }
            } else if (common::FileExists(entry)) {
                bool background = false;
                IsBackgroundImage(entry, background);
                // Background pictures share the folders of the photographs; they are passed.
                if (!(background && SkipBackgroundImages)) {
                    candidate = entry;
                    ChosenLink = entry;
                    ChosenTitle = common::FileNameOf(entry);
                }
            } else {
                BugLog(QStringLiteral("(doesn't exist)"));
            }

            // With entries queued already, an empty pool is not reloaded; when nothing at all
            // is left to draw from, this image is given up rather than drawn for ever.
            if (candidate == kUndrawn && entry.isEmpty() && ImageList.isEmpty() &&
                RandomFolderFileList.isEmpty() && !ShowList.isEmpty())
                candidate = kExit;
            // A draw that took nothing from the pool would be made again for ever: blank
            // entries (a bare record line in a list) have no folder to be found by, so they go.
            if (candidate == kUndrawn && entry.isEmpty() &&
                ImageList.count() + RandomFolderFileList.count() >= poolBefore &&
                !DropBlankEntries())
                candidate = kExit;
        }

        if (candidate == kNoImages) {
            BugLog(QStringLiteral(" AH !  There are no valid images at all !!! Loading the "
                                  "internal logo image "));
            ShowList.add(QStringLiteral("INTERNAL:0"));
            CaptionsList.add(QStringLiteral(" | "));
            NoValidImages = true;
        } else if (candidate != kExit) {
            ShowList.add(candidate, tag);
            CaptionsList.add(ChosenLink + QStringLiteral("|") + ChosenTitle);
        }
    }
}

bool frmSlideShow::DropBlankEntries() {
    const auto blank = [](const TaggedStringList::Item& item) {
        return item.text.trimmed().isEmpty();
    };
    bool dropped = false;
    for (TaggedStringList* list : {&ImageList, &RandomFolderFileList})
        if (!list->takeIf(blank).empty()) dropped = true;
    return dropped;
}

void frmSlideShow::IsBackgroundImage(const QString& path, bool& result) {
    result = common::FileNameOf(path).left(10).toLower() == QLatin1String("background");
}

// Stand-in until the web image cache arrives: no web image can be fetched, so web entries are
// passed over like missing files.
void frmSlideShow::WebImageExists(const QString& entry, QString& cachedPath, bool& exists) {
    Q_UNUSED(entry);
    cachedPath.clear();
    exists = false;
}

void frmSlideShow::NextSequentialImage(QString& entry, std::int32_t& tag) {
    TakeItem(ImageList, 0, entry, tag);
    BugLog(QStringLiteral("NextSeq: remove 0 from imlist"));
    BugLog(QStringLiteral("NextSequentialImage > ") + entry);
}

void frmSlideShow::NextRandomImage(QString& entry, std::int32_t& tag) {
    const int index = RandomIndex(ImageList.count());
    TakeItem(ImageList, index, entry, tag);
    BugLog(QStringLiteral("NextRandom: remove ") + QString::number(index) +
           QStringLiteral(" from imlist"));
    BugLog(QStringLiteral("NextRandomImage > ") + entry);
}

void frmSlideShow::CheckThereIsARandomFolderSet() {
    // "xxx", written after a reload, counts as set: it is a folder that does not exist.
    if (CurrentRandomFolder == QLatin1String("xx") || CurrentRandomFolder.isEmpty()) {
        BugLog(QStringLiteral("CurrentRandomfolder is not specified"));
        NewRandomFolder(CurrentRandomFolder);
    }
}

void frmSlideShow::NewRandomFolder(QString& result) {
    QString key;
    int tries = 0;
    // A pool of one folder gives that folder again after the last try.
    for (tries = 1; tries <= 30; ++tries) {
        key = FolderKeyOf(ImageList.text(RandomIndex(ImageList.count())));
        if (key != CurrentRandomFolder) break;
    }
    if (tries > 30) tries = 30;
    BugLog(QStringLiteral("Chose new random folder after ") + QString::number(tries) +
           QStringLiteral(" tries > ") + key);
    result = key;
}

void frmSlideShow::GetNextImageFromRandomFolder(const TaggedStringList& list, const QString& folder,
                                                bool& found, int& index) {
    found = false;
    index = -1;
    if (folder.isEmpty()) return;
    for (int i = 0; i < list.count(); ++i) {
        if (InFolder(list.text(i), folder)) {
            found = true;
            index = i;
            return;
        }
    }
}

void frmSlideShow::NextRandomFolderImage(QString& entry, std::int32_t& tag) {
    CheckThereIsARandomFolderSet();
    bool found = false;
    int index = -1;
    GetNextImageFromRandomFolder(ImageList, CurrentRandomFolder, found, index);
    if (found) {
        TakeItem(ImageList, index, entry, tag);
    } else {
        BugLog(QStringLiteral(" There are no more images to show in ") + CurrentRandomFolder);
        NewRandomFolder(CurrentRandomFolder);
        BugLog(QStringLiteral("New folder is \r\n") + CurrentRandomFolder);
        BugLog(QStringLiteral("  and get first matching iamge ... "));
        // Any entry that holds the key will do here, one in a sub-folder too.
        for (int i = 0; i < ImageList.count(); ++i) {
            if (ImageList.text(i).contains(CurrentRandomFolder, Qt::CaseInsensitive)) {
                TakeItem(ImageList, i, entry, tag);
                break;
            }
        }
    }
    BugLog(QStringLiteral("NextRandomFolderImage > ") + entry);
}

void frmSlideShow::NextRandomFolderRandomImage(QString& entry, std::int32_t& tag) {
    BugLog(QStringLiteral("Current Random Folder is ") + CurrentRandomFolder);
    if (RandomFolderFileList.isEmpty()) {
        BugLog(QStringLiteral("RandomFolderFileList is empty"));
        NewRandomFolder(CurrentRandomFolder);
        CollectImagesInARandomFolder(ImageList, CurrentRandomFolder, RandomFolderFileList);
        BugLog(QStringLiteral("Found ") + QString::number(RandomFolderFileList.count()) +
               QStringLiteral(" images in that folder"));
    }
    TakeItem(RandomFolderFileList, RandomIndex(RandomFolderFileList.count()), entry, tag);
    BugLog(QStringLiteral("NextRandomFolderRandomImage is > ") + entry);
}

void frmSlideShow::NextImageFromSameRandomFolder(QString& entry, std::int32_t& tag) {
    if (!ShowList.isEmpty()) {
        // The later pictures of a Four Up frame follow its first.
        CurrentRandomFolder = FolderKeyOf(ShowList.text(0));
        BugLog(QStringLiteral("Current Random Folder is ") + CurrentRandomFolder);
    } else {
        NewRandomFolder(CurrentRandomFolder);
        BugLog(QStringLiteral("New Random Folder is ") + CurrentRandomFolder);
        RandomFolderFileList.clear();
        CollectImagesInARandomFolder(ImageList, CurrentRandomFolder, RandomFolderFileList);
        BugLog(QStringLiteral("Found ") + QString::number(RandomFolderFileList.count()) +
               QStringLiteral(" images in that folder"));
    }
    if (RandomFolderFileList.isEmpty()) {
        BugLog(QStringLiteral(
            "RandomFolderFileList is empty - not adding any more images to ShowList"));
        entry = kExit;
        return;
    }
    TakeItem(RandomFolderFileList, RandomIndex(RandomFolderFileList.count()), entry, tag);
    BugLog(QStringLiteral("NextImageFromSameRandomFolder is > ") + entry);
}

void frmSlideShow::CollectImagesInARandomFolder(TaggedStringList& source, const QString& folder,
                                                TaggedStringList& target) {
    target.clear();
    if (folder.isEmpty()) return;
    // The folder's images leave the pool in one pass, and the target has them from the last
    // to the first.
    const std::vector<TaggedStringList::Item> taken = source.takeIf(
        [&folder](const TaggedStringList::Item& item) { return InFolder(item.text, folder); });
    for (auto it = taken.rbegin(); it != taken.rend(); ++it)
        target.add(it->text, it->tag);
}

void frmSlideShow::GetImageFolder(const QString& path, QString& result) {
    const QString tail = path.right(common::kPathWindow);
    const auto cut = std::max(tail.lastIndexOf(QLatin1Char('/')), tail.lastIndexOf('\\'));
    result = cut < 0 ? QString() : path.left(path.size() - tail.size() + cut);
}

void frmSlideShow::CollectFolderNamesFromImageList() {
    ImageFolderList.clear();
    QString previous;
    for (const TaggedStringList::Item& item : ImageList.items()) {
        QString folder;
        GetImageFolder(item.text, folder);
        if (folder != previous) ImageFolderList.add(folder);
        previous = folder;
    }
    BugLog(QString::number(ImageList.count()) + QStringLiteral(" lines to scan"));
    BugLog(QString::number(ImageFolderList.count()) + QStringLiteral(" folders"));
}

void frmSlideShow::ShowImageLists() {
    if (!DebugLogOn()) return;
    BugLog(QStringLiteral(" ---- image lists --- "));
    BugLog(QStringLiteral("(current) ") + CurrentImage);
    for (const TaggedStringList::Item& item : ShowList.items())
        BugLog(QStringLiteral("(showlist) ") + item.text);
    for (const TaggedStringList::Item& item : RandomFolderFileList.items())
        BugLog(QStringLiteral("(randfolderlist) ") + item.text);
    for (const TaggedStringList::Item& item : ImageList.items())
        BugLog(QStringLiteral("(imagelist) ") + item.text);
}
