#include "app/Forms.h"
#include "app/Resources.h"

#include <QApplication>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {
QtMessageHandler g_previous = nullptr;

// The offscreen platform says so each time a show asks for the keyboard or the top of the
// stack, and the audio players report each sound server they try before they settle on a
// silent output; both are expected here and would bury the test output.
void QuietHandler(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (text.startsWith(QLatin1String("This plugin does not support"))) return;
    if (qstrcmp(context.category, "qt.multimedia.player") == 0 &&
        text.contains(QLatin1String("Failed to connect")))
        return;
    if (g_previous) g_previous(type, context, text);
}
} // namespace

int main(int argc, char** argv) {
    g_previous = qInstallMessageHandler(QuietHandler);
    // Nothing a test does may reach the user's own settings or need a display.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QTemporaryDir config;
    qputenv("XDG_CONFIG_HOME", config.path().toUtf8());

    ::testing::InitGoogleTest(&argc, argv);
    QApplication app(argc, argv);
    InitResources();
    // Tests unload forms without an event loop to end.
    Forms::SetLastFormHandler([] {});
    return RUN_ALL_TESTS();
}
