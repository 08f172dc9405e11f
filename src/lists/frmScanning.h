#pragma once

#include "app/Forms.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QString>
#include <QStringList>
#include <QWidget>

class VbTimer;

// The small window that shows a folder scan under way and offers to stop it. It is made for one
// scan and goes by itself: 1.5 s after the scan ends, at once on an abort or an error.
class frmScanning : public QWidget, public FormSingleton<frmScanning> {
    Q_OBJECT
public:
    frmScanning();
    ~frmScanning() override;
    void beforeUnload() { Form_Unload(); }

    // The window the scan belongs to: disabled while this window is up, enabled again when it
    // goes. Set before each scan.
    void SetOwner(QWidget* owner);

    // Appends one "IMAGE>" record per image file of folder (and of every folder below it when
    // recurse is on, breadth first) to list. count is the number of lines in list at the end,
    // aborted or not. A folder that cannot be listed at all is an error: aborted comes back
    // true and count is left as it was.
    void RescanFolder(const QString& folder, bool recurse, QStringList& list, int& count,
                      bool& aborted);

    void Form_Load();
    void Form_Unload();
    void cmdAbortScan_Click();
    void PauseTimer_Timer();

    QLabel* lblScanningFolder = nullptr;
    QLabel* lblHits = nullptr;
    QPushButton* cmdAbortScan = nullptr;
    VbTimer* PauseTimer = nullptr;
    bool abortRequested = false;

    // How often, at most, the labels change and window events are taken while a scan runs. A
    // scan reads thousands of names a second; nobody reads the labels faster than this, and
    // each repaint costs as much as reading a folder.
    static constexpr int kRepaintEveryMs = 200;
    static constexpr int kEventsEveryMs = 40;

private:
    void SetFolderText(const QString& text);
    void ShowProgress(const QString& folder, qsizetype hits);
    bool TakeEvents();

    QPointer<QWidget> owner_;
    QElapsedTimer sinceRepaint_;
    QElapsedTimer sinceEvents_;
};
