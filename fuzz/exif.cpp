// The EXIF reader on whole files: any bytes as the picture, every question the show asks.
// An "exif.ini" that rewrites texts is in place, so the rewriting runs too.
#include "FuzzSupport.h"
#include "compose/clsEXIF.h"

namespace {

const QString& IniPath() {
    static const QString path = [] {
        const QString ini = fuzz::InstallPath(QStringLiteral("exif.ini"));
        fuzz::WriteFile(ini, "[Flash]\r\n1=Fired\r\n0=No flash\r\n"
                             "[FNumber]\r\nFormat=f/@X\r\n"
                             "[Orientation]\r\n6=Rotated\r\nFormat=@X@X\r\n"
                             "[Tag #1]\r\nFormat=one @X\r\n");
        return ini;
    }();
    return path;
}

} // namespace

// The application and the windows are built before the first input, outside its time limit.
extern "C" int LLVMFuzzerInitialize(int*, char***) {
    fuzz::Install();
    IniPath();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QString picture = fuzz::InstallPath(QStringLiteral("picture.jpg"));
    fuzz::WriteFile(picture, fuzz::Bytes(data, size));

    clsEXIF exif(IniPath());
    exif.SetImageFile(picture);
    fuzz::Check(exif.ReadStatus() >= 0 && exif.ReadStatus() <= 2);
    exif.GetOrigDate();
    exif.GetDescription();
    const int orientation = exif.GetOrientation();
    if (exif.ReadStatus() != 0) fuzz::Check(orientation == 1);
    exif.GetDimensionsAsString();
    exif.ListInfo();
    for (const TagEntry& entry : exif.Tags()) {
        QString text;
        QVariant value;
        exif.MetaInfo(entry.Tag, text, value);
        clsEXIF::GetTagName(entry.Tag);
    }
    // A plain reader without "exif.ini" on the same file.
    clsEXIF bare(fuzz::InstallPath(QStringLiteral("no-such.ini")));
    bare.SetImageFile(picture);
    fuzz::Check(bare.ReadStatus() == exif.ReadStatus());
    bare.GetOrientation();
    return 0;
}
