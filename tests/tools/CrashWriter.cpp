// Writes one of the program's files over and over through the program's own routines, for the
// crash-safety tests to kill at random moments:
//   tessaview_crash_writer prefs|remain|list|settings|marked <install folder>
// Each round is one generation, numbered from 1; "<n>\n" goes to standard output once
// generation n is on disk. The contents of every generation are given by CrashWriter.h, so
// that the test can tell a whole file of either generation from anything else.
#include "CrashWriter.h"

#include "app/Forms.h"
#include "app/Resources.h"
#include "app/modMain.h"
#include "config/frmConfig.h"
#include "lists/ImageListFile.h"
#include "platform/Clock.h"
#include "prefs/MRegistry.h"
#include "show/frmSlideShow.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <cstdio>
#include <cstring>
#include <string>
#include <unistd.h>

namespace {

void Committed(int generation) {
    const std::string line = std::to_string(generation) + "\n";
    // Unbuffered: the test must learn of a generation before the next one starts.
    if (::write(STDOUT_FILENO, line.data(), line.size()) < 0) std::_Exit(3);
}

frmConfig* LoadConfig() {
    frmConfig* config = frmConfig::instance();
    const QString installDir = InstallDir;
    config->FormIsInitializing = true;
    config->Initialize();
    config->FormIsInitializing = false;
    InstallDir = installDir;
    return config;
}

[[noreturn]] void WritePrefs() {
    frmConfig* config = LoadConfig();
    for (int g = 1;; ++g) {
        crashwriter::ApplyPrefsGeneration(*config, g);
        config->SavePrefs();
        Committed(g);
    }
}

[[noreturn]] void WriteRemainingLists() {
    LoadConfig();
    frmSlideShow* show = frmSlideShow::instance();
    show->Initialize();
    for (int g = 1;; ++g) {
        crashwriter::FillPoolGeneration(*show, g);
        show->SaveRemainingList();
        Committed(g);
    }
}

[[noreturn]] void RewriteImageList() {
    const QString file = crashwriter::ListFileOf(InstallDir);
    QDir().mkpath(QFileInfo(file).path());
    // The list as a settings window first writes it; every round is then a rescan's rewrite.
    lists::ImageListRow row{QStringLiteral("Rescanned"),
                            QStringLiteral("0"),
                            QStringLiteral("/pics/"),
                            QStringLiteral("Local"),
                            file,
                            QStringLiteral("01/01/2026"),
                            QStringLiteral("1"),
                            {QStringLiteral("RECURSE==True")}};
    if (!lists::WriteTextLines(file, lists::ImageListLines(row, {}))) std::_Exit(4);
    for (int g = 1;; ++g) {
        if (!lists::ReWriteImageList(file, crashwriter::RecordsOf(g))) std::_Exit(4);
        Committed(g);
    }
}

[[noreturn]] void MarkImages() {
    LoadConfig();
    frmSlideShow* show = frmSlideShow::instance();
    show->Initialize();
    for (int g = 1;; ++g) {
        show->CurrentImage = crashwriter::MarkedOf(g);
        show->MarkThisImage();
        Committed(g);
    }
}

[[noreturn]] void WriteSettings() {
    for (int g = 1;; ++g) {
        SaveSetting(QStringLiteral("xFadeStepTime"), crashwriter::StepTimeOf(g));
        SaveSetting(QStringLiteral("installDir"), crashwriter::InstallDirOf(g));
        Committed(g);
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s prefs|remain|list|settings|marked <install folder>\n",
                     argv[0]);
        return 2;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    InitResources();
    Forms::SetLastFormHandler([] {});
    InstallDir = QString::fromLocal8Bit(argv[2]);
    platform::SetNow(crashwriter::kMoment);
    if (std::strcmp(argv[1], "prefs") == 0) WritePrefs();
    if (std::strcmp(argv[1], "remain") == 0) WriteRemainingLists();
    if (std::strcmp(argv[1], "list") == 0) RewriteImageList();
    if (std::strcmp(argv[1], "settings") == 0) WriteSettings();
    if (std::strcmp(argv[1], "marked") == 0) MarkImages();
    std::fprintf(stderr, "unknown file: %s\n", argv[1]);
    return 2;
}
