// The number and path helpers that take text straight from files: the number at the front of
// a text and its conversions, the preferences' field conversions, the path pieces and the
// fields of an image entry.
#include "FuzzSupport.h"
#include "app/Common.h"
#include "app/VbNumbers.h"
#include "lists/ImageEntry.h"
#include "lists/ImageListFile.h"
#include "lists/ListDates.h"
#include "prefs/PrefsTable.h"

#include <cmath>
#include <cstring>

namespace {

template <class F> void Tolerant(F&& f) {
    try {
        f();
    } catch (const prefs::ReadError&) {
        // A value the window refuses is a normal outcome of reading a file.
    }
}

} // namespace

// The application and the windows are built before the first input, outside its time limit.
extern "C" int LLVMFuzzerInitialize(int*, char***) {
    fuzz::Install();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QString text = QString::fromUtf8(fuzz::Bytes(data, size));

    const double value = vb::Val(text);
    vb::IsNumeric(text);
    const double rounded = vb::RoundHalfEven(value);
    if (std::isfinite(value)) {
        fuzz::Check(std::fabs(rounded - value) <= 0.5);
        fuzz::Check(vb::Int(value) <= value);
    }
    vb::CInt(value);
    vb::CLng(value);
    vb::CSng(value);
    std::int64_t whole = 0;
    std::memcpy(&whole, data, std::min(size, sizeof whole));
    vb::Wrap16(whole);
    vb::FormatThousands(whole);

    Tolerant([&] { prefs::ToChk(text); });
    Tolerant([&] { prefs::ToIdx(text, 7); });
    Tolerant([&] { prefs::ToBool(text); });
    Tolerant([&] { prefs::ToColour(text); });
    Tolerant([&] { prefs::ToZone(text); });
    Tolerant([&] {
        const float pct = prefs::ToPct(text);
        // Whatever a percentage was read as is written so that it reads back the same.
        if (std::isfinite(pct)) fuzz::Check(prefs::ToPct(prefs::PercentText(pct)) == pct);
    });
    Tolerant([&] { prefs::ToNumberText(text); });

    common::FileNameOf(text);
    common::FolderWithSeparator(text);
    common::FolderOf(text);
    common::FileNameAndFolder(text);
    common::SplitQuotedField(text, static_cast<int>(size % 5));

    IsWebEntry(text);
    IsInternalEntry(text);
    GetURLfromEntry(text);
    GetTitleFromEntry(text);
    FolderKeyOf(text);
    lists::WebListBaseName(text);
    ReadListFileDate(text);
    return 0;
}
