// The preferences file as the settings window reads it at every start. Whatever a file made of
// the window's settings, writing them and reading them again changes nothing.
#include "FormsSupport.h"

// The application and the windows are built before the first input, outside its time limit.
extern "C" int LLVMFuzzerInitialize(int*, char***) {
    fuzz::Config();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    frmConfig* config = fuzz::Config();
    fuzz::WriteFile(config->PrefsFileName, fuzz::Bytes(data, size));
    config->LoadPrefs();

    const QString written = config->PrefsText();
    fuzz::WriteFile(config->PrefsFileName, written.toUtf8());
    config->LoadPrefs();
    fuzz::Check(config->PrefsText() == written);
    return 0;
}
