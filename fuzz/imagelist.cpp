// The settings window's reader of image list files (from lines and from the file), and the two
// writers that follow from it: a list read and written again reads back the same, and the show's
// rewrite keeps the header.
#include "FuzzSupport.h"
#include "lists/ImageListFile.h"

// The application and the windows are built before the first input, outside its time limit.
extern "C" int LLVMFuzzerInitialize(int*, char***) {
    fuzz::Install();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QString path = fuzz::InstallPath(QStringLiteral("list.tvl"));
    fuzz::WriteFile(path, fuzz::Bytes(data, size));

    QStringList lines;
    fuzz::Check(lists::ReadTextLines(path, lines));
    const lists::LoadedImageList loaded = lists::ParseImageList(lines, path);
    // The window reads the file a line at a time; it must make of it what the lines make.
    const std::optional<lists::LoadedImageList> streamed = lists::ReadImageList(path);
    fuzz::Check(streamed.has_value() == !lines.isEmpty());
    if (streamed)
        fuzz::Check(
            streamed->row.title == loaded.row.title && streamed->row.path == loaded.row.path &&
            streamed->row.count == loaded.row.count && streamed->row.type == loaded.row.type &&
            streamed->row.lastScan == loaded.row.lastScan &&
            streamed->row.scanInterval == loaded.row.scanInterval &&
            streamed->row.options == loaded.row.options && streamed->images == loaded.images &&
            streamed->failed == loaded.failed &&
            streamed->sawImagesMarker == loaded.sawImagesMarker);
    lists::CountImageRecords(loaded.images);
    lists::IconKeyForLoadedType(loaded.row.type);

    // What the window writes of a row it read is read back as the same row.
    const QStringList written = lists::ImageListLines(loaded.row, loaded.images);
    const lists::LoadedImageList again = lists::ParseImageList(written, path);
    fuzz::Check(again.row.title == loaded.row.title && again.row.path == loaded.row.path);
    fuzz::Check(again.row.options == loaded.row.options);
    fuzz::Check(again.images == loaded.images);

    const QStringList records{QStringLiteral("IMAGE>/pics/a.jpg"), QStringLiteral("TITLE>a")};
    const QStringList rewritten =
        lists::ReWrittenImageListLines(lines, records, QDate(2026, 11, 22));
    if (!rewritten.isEmpty()) fuzz::Check(rewritten.mid(rewritten.size() - 2) == records);
    lists::ReWriteImageList(path, records);
    return 0;
}
