// The show's loader of image list files: the input is the one list in the Imagelists folder,
// read into the pool with its dates, titles and descriptions.
#include "FormsSupport.h"

// The application and the windows are built before the first input, outside its time limit.
extern "C" int LLVMFuzzerInitialize(int*, char***) {
    fuzz::Show();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    frmSlideShow* show = fuzz::Show();
    static const QString folder = [] {
        const QString lists = fuzz::InstallPath(QStringLiteral("Imagelists"));
        QDir().mkpath(lists);
        return lists;
    }();
    fuzz::WriteFile(folder + QStringLiteral("/fuzz_1.tvl"), fuzz::Bytes(data, size));
    // A due rescan would walk whatever folder an input names, "/" and all its sub-folders among
    // them, and bring in what it finds there. The walk has tests of its own; here every list is
    // read as it stands, with its rescan put off as after a failed scan.
    std::fill(std::begin(show->ScanSkip), std::end(show->ScanSkip), 1000);
    show->LoadFullImageList();

    int records = 0;
    for (const QByteArray& line : fuzz::Bytes(data, size).split('\n'))
        if (line.trimmed().startsWith("IMAGE>")) ++records;
    // No image comes from nowhere.
    fuzz::Check(show->ImageList.count() <= records);
    for (int i = 0; i < show->ImageTitles.count(); ++i)
        fuzz::Check(show->ImageTitles.tag(i) < show->ImageList.count());
    return 0;
}
