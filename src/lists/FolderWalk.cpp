#include "lists/FolderWalk.h"

#include "platform/FileListing.h"

#include <QFile>
#include <algorithm>
#include <array>
#include <deque>
#include <dirent.h>
#include <fcntl.h>
#include <set>
#include <string>
#include <sys/stat.h>
#include <utility>
#include <vector>

namespace lists {
namespace {

constexpr std::array<std::string_view, 7> kExtensions = {".jpg",  ".bmp",  ".gif", ".tif",
                                                         ".tiff", ".jpeg", ".png"};

char AsciiLower(char c) {
    return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c;
}

bool EndsWithIgnoringCase(std::string_view name, std::string_view lowerTail) {
    if (name.size() < lowerTail.size()) return false;
    const std::string_view end = name.substr(name.size() - lowerTail.size());
    for (std::size_t i = 0; i < end.size(); ++i)
        if (AsciiLower(end[i]) != lowerTail[i]) return false;
    return true;
}

// What the listing would make of one entry: a folder (links to folders count), a file (anything
// else, a dangling link and a pipe too, as the file listing shows them), or gone.
enum class EntryKind { Folder, File, Gone };

EntryKind KindOf(int dirFd, const dirent& entry) {
    if (entry.d_type == DT_DIR) return EntryKind::Folder;
    if (entry.d_type != DT_LNK && entry.d_type != DT_UNKNOWN) return EntryKind::File;
    struct stat st {};
    if (fstatat(dirFd, entry.d_name, &st, 0) == 0)
        return S_ISDIR(st.st_mode) ? EntryKind::Folder : EntryKind::File;
    // The target is missing: still a file to the listing if the entry itself is there.
    if (fstatat(dirFd, entry.d_name, &st, AT_SYMLINK_NOFOLLOW) == 0) return EntryKind::File;
    return EntryKind::Gone;
}

bool IsDotOrDotDot(const char* name) {
    return name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'));
}

// A sub-folder's full path as the folder listing gives it: one separator, even under the root.
QString SubFolderPath(const QString& listingPath, const QString& name) {
    return listingPath.endsWith(QLatin1Char('/')) ? listingPath + name
                                                  : listingPath + QLatin1Char('/') + name;
}

// The listing's order, taken by the short way while both names are ASCII: case-blind there
// means lowering A to Z, and equal names fall to the code units as they do in the listing.
// Sorting is most of what the walk adds to the bare reading of the folders.
bool ListingOrder(const QString& a, const QString& b) {
    const qsizetype n = std::min(a.size(), b.size());
    const QChar* pa = a.constData();
    const QChar* pb = b.constData();
    for (qsizetype i = 0; i < n; ++i) {
        const char16_t ca = pa[i].unicode();
        const char16_t cb = pb[i].unicode();
        if (ca >= 0x80 || cb >= 0x80) return platform::NameLess(a, b);
        if (ca == cb) continue;
        const char16_t la = (ca >= u'A' && ca <= u'Z') ? ca + (u'a' - u'A') : ca;
        const char16_t lb = (cb >= u'A' && cb <= u'Z') ? cb + (u'a' - u'A') : cb;
        if (la != lb) return la < lb;
    }
    if (a.size() != b.size()) return a.size() < b.size();
    return a < b;
}

// A name that is not valid UTF-8 cannot come back from its text form; the listing leaves such
// a name out, and a record of it would name a file that is not there.
bool DecodeName(const char* raw, std::string_view name, QString& out) {
    out = QFile::decodeName(raw);
    const bool ascii = std::all_of(name.begin(), name.end(),
                                   [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    return ascii || QFile::encodeName(out) == QByteArrayView(name.data(), qsizetype(name.size()));
}

// ListingOrder on raw names known to be ASCII, without making strings of them first.
bool AsciiListingOrder(std::string_view a, std::string_view b) {
    const std::size_t n = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < n; ++i) {
        if (a[i] == b[i]) continue;
        const char la = AsciiLower(a[i]);
        const char lb = AsciiLower(b[i]);
        if (la != lb) return la < lb;
    }
    if (a.size() != b.size()) return a.size() < b.size();
    return a < b;
}

bool IsAscii(std::string_view name) {
    return std::all_of(name.begin(), name.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

// The image names of one folder, kept as bytes in one buffer: most folders hold only ASCII
// names, which go straight from the buffer into their records, one string each.
struct FolderContents {
    std::string names;
    std::vector<std::pair<std::size_t, std::size_t>> images; // offset and length in names
    bool allAscii = true;
    std::vector<QString> folders;
    bool aborted = false;

    std::string_view image(std::size_t i) const {
        return std::string_view(names).substr(images[i].first, images[i].second);
    }
};

void ReadFolder(DIR* dir, bool wantFolders, const FolderWalkHooks& hooks, FolderContents& out) {
    const int fd = dirfd(dir);
    int sinceCheck = 0;
    for (;;) {
        if (++sinceCheck == kEntriesBetweenAbortChecks) {
            sinceCheck = 0;
            if (hooks.abortRequested && hooks.abortRequested()) {
                out.aborted = true;
                return;
            }
        }
        const dirent* entry = readdir(dir);
        // An error mid-listing (the folder removed under us) ends it with what was read.
        if (entry == nullptr) return;
        if (IsDotOrDotDot(entry->d_name)) continue;
        const std::string_view name(entry->d_name);
        const bool image = IsScanImageName(name);
        // Only a name that could matter is worth a stat: an image name (it must not be a
        // folder) or, when sub-folders are wanted, anything that may turn out a folder.
        if (!image && !(wantFolders && (entry->d_type == DT_DIR || entry->d_type == DT_LNK ||
                                        entry->d_type == DT_UNKNOWN)))
            continue;
        const EntryKind kind = KindOf(fd, *entry);
        if (kind == EntryKind::Folder) {
            QString decoded;
            if (wantFolders && DecodeName(entry->d_name, name, decoded))
                out.folders.push_back(std::move(decoded));
        } else if (kind == EntryKind::File && image) {
            out.allAscii = out.allAscii && IsAscii(name);
            out.images.emplace_back(out.names.size(), name.size());
            out.names.append(name);
        }
    }
}

// Appends the folder's records in the listing's order.
void AppendRecords(FolderContents& contents, const QString& head, QStringList& list) {
    if (contents.allAscii) {
        std::sort(contents.images.begin(), contents.images.end(),
                  [&contents](const auto& a, const auto& b) {
                      const std::string_view names(contents.names);
                      return AsciiListingOrder(names.substr(a.first, a.second),
                                               names.substr(b.first, b.second));
                  });
        for (std::size_t i = 0; i < contents.images.size(); ++i) {
            const std::string_view name = contents.image(i);
            QString record;
            record.reserve(head.size() + static_cast<qsizetype>(name.size()));
            record.append(head);
            record.append(QLatin1StringView(name.data(), static_cast<qsizetype>(name.size())));
            list.append(std::move(record));
        }
        return;
    }
    std::vector<QString> decoded;
    decoded.reserve(contents.images.size());
    for (std::size_t i = 0; i < contents.images.size(); ++i) {
        const std::string name(contents.image(i));
        QString text;
        if (DecodeName(name.c_str(), name, text)) decoded.push_back(std::move(text));
    }
    std::sort(decoded.begin(), decoded.end(), ListingOrder);
    for (const QString& name : decoded)
        list.append(head + name);
}

} // namespace

bool IsScanImageName(std::string_view name) {
    return std::any_of(kExtensions.begin(), kExtensions.end(),
                       [name](std::string_view tail) { return EndsWithIgnoringCase(name, tail); });
}

QString ListingPath(const QString& folder) {
    qsizetype n = folder.size();
    while (n > 1 && folder[n - 1] == QLatin1Char('/'))
        --n;
    return folder.left(n);
}

FolderWalkResult WalkImageFolders(const QString& folder, bool recurse, QStringList& list,
                                  const FolderWalkHooks& hooks) {
    FolderWalkResult result;
    std::deque<QString> FoldersToScan{folder};
    std::set<std::pair<dev_t, ino_t>> seen;
    const QString tag = QStringLiteral("IMAGE>");

    while (!FoldersToScan.empty()) {
        const QString current = ListingPath(FoldersToScan.front());
        FoldersToScan.pop_front();

        DIR* dir = current.isEmpty() ? nullptr : opendir(QFile::encodeName(current).constData());
        struct stat st {};
        if (dir == nullptr || fstat(dirfd(dir), &st) != 0 ||
            !seen.insert({st.st_dev, st.st_ino}).second) {
            if (dir != nullptr) closedir(dir);
            ++result.foldersPassedBy;
        } else {
            if (hooks.progress) hooks.progress(current, list.size());
            FolderContents contents;
            ReadFolder(dir, recurse, hooks, contents);
            closedir(dir);
            if (contents.aborted) {
                result.aborted = true;
                break;
            }
            ++result.foldersRead;
            std::sort(contents.folders.begin(), contents.folders.end(), ListingOrder);
            for (const QString& name : contents.folders)
                FoldersToScan.push_back(SubFolderPath(current, name));
            AppendRecords(contents, tag + current + QLatin1Char('/'), list);
        }
        if (hooks.abortRequested && hooks.abortRequested()) {
            result.aborted = true;
            break;
        }
    }
    result.count = list.size();
    return result;
}

} // namespace lists
