#pragma once

#include "app/Forms.h"
#include "app/modMain.h"
#include "config/frmConfig.h"
#include "platform/Clock.h"
#include "platform/Cursor.h"
#include "platform/Dialogs.h"
#include "platform/Random.h"
#include "platform/VbTimer.h"
#include "prefs/MRegistry.h"
#include "show/frmSlideShow.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QDir>
#include <QEvent>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QSettings>
#include <QTemporaryDir>
#include <QtEndian>
#include <gtest/gtest.h>

// Silence as a WAV file any player can open: 16-bit mono PCM of the given length.
inline QByteArray SilentWav(int milliseconds = 100, int samplesPerSecond = 8000) {
    const auto samples =
        static_cast<quint32>(static_cast<qint64>(samplesPerSecond) * milliseconds / 1000);
    const quint32 dataBytes = samples * 2;
    QByteArray wav;
    auto put32 = [&wav](quint32 v) {
        const quint32 le = qToLittleEndian(v);
        wav.append(reinterpret_cast<const char*>(&le), 4);
    };
    auto put16 = [&wav](quint16 v) {
        const quint16 le = qToLittleEndian(v);
        wav.append(reinterpret_cast<const char*>(&le), 2);
    };
    wav.append("RIFF");
    put32(36 + dataBytes);
    wav.append("WAVEfmt ");
    put32(16);
    put16(1); // PCM
    put16(1); // mono
    put32(static_cast<quint32>(samplesPerSecond));
    put32(static_cast<quint32>(samplesPerSecond) * 2); // bytes per second
    put16(2);                                          // block align
    put16(16);                                         // bits per sample
    wav.append("data");
    put32(dataBytes);
    wav.append(QByteArray(static_cast<qsizetype>(dataBytes), '\0'));
    return wav;
}

// Writes a file whole, making its folder first, so that a test's files take one line each.
inline void PutFile(const QString& path, const QByteArray& content) {
    ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path())) << path.toStdString();
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate)) << path.toStdString();
    file.write(content);
}

// A file's bytes, or none when it cannot be read.
inline QByteArray ReadFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The lines of a show's on-screen log, for tests that look for what it wrote.
inline QStringList LogLines(const frmSlideShow* show) {
    QStringList lines;
    for (int i = 0; i < show->lstDebug->count(); ++i)
        lines << show->lstDebug->item(i)->text();
    return lines;
}

// Removes a value from the program's settings store.
inline void ForgetSetting(const QString& key) {
    QSettings store(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("Marrowfield"),
                    QStringLiteral("Tessaview"));
    store.remove(key);
    store.sync();
}

// PutFile for a test that goes on to use the file's path.
inline QString Written(const QString& path, const QByteArray& content) {
    PutFile(path, content);
    return path;
}

// A picture of one colour.
inline QImage Solid(QSize size, const QColor& colour,
                    QImage::Format format = QImage::Format_RGB32) {
    QImage image(size, format);
    image.fill(colour);
    return image;
}

// A fresh program state around each test that touches the forms: an install folder of its
// own, a set clock, no real dialogs, and every form unloaded afterwards.
class FormsFixture : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(install.isValid());
        InstallDir = install.path();
        ExitShow = false;
        RunningFromConfig = false;
        platform::SetNow(QDateTime(QDate(2026, 11, 22), QTime(12, 0, 0)));
        platform::ClearRandomFeed();
        platform::ResetCursorCounter();
        platform::SetMsgBoxAnswerer([this](const platform::MsgBoxCall& call) {
            messages.push_back(call);
            return static_cast<int>(platform::vbOK);
        });
        // The show reads its settings from the configuration window, as in a real run.
        SaveSetting(QStringLiteral("installDir"), install.path());
        LoadConfig();
    }
    // A fresh configuration window, started as a run starts it, reading the install folder
    // as it is now.
    static frmConfig* ReloadConfig() {
        Forms::UnloadAll();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return LoadConfig();
    }
    static frmConfig* LoadConfig() {
        const QString installDir = InstallDir;
        frmConfig* config = frmConfig::instance();
        config->FormIsInitializing = true;
        config->Initialize();
        config->FormIsInitializing = false;
        InstallDir = installDir;
        return config;
    }
    void TearDown() override {
        frmSlideShow::StopStepObserver = nullptr;
        frmSlideShow::StartStepObserver = nullptr;
        Forms::UnloadAll();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        DebugLog::instance().SetOff();
        platform::SetMsgBoxAnswerer(nullptr);
        platform::UseSystemClock();
        platform::ClearRandomFeed();
        platform::UseRealCursorPos();
        platform::ResetCursorCounter();
        InstallDir.clear();
        ExitShow = false;
        ForgetSetting(QStringLiteral("installDir"));
    }

    QTemporaryDir install;
    std::vector<platform::MsgBoxCall> messages;
};

// A show form with its settings read, as a show has it at its start.
class ShowFixture : public FormsFixture {
protected:
    void SetUp() override {
        FormsFixture::SetUp();
        show = frmSlideShow::instance();
        show->Initialize();
    }
    frmSlideShow* show = nullptr;
};

// A show form laid out on the screens, as a show has it before its first frame; its fades do
// not sleep between their steps (the step time is longer than any fade).
class ShowOnScreenFixture : public ShowFixture {
protected:
    void SetUp() override {
        ShowFixture::SetUp();
        show->GetScreenSize();
        show->PrepScreen();
        show->xFadeStepTime = 100.0f;
    }
};
