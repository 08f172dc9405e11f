#pragma once

#include "app/Forms.h"

#include <QLabel>
#include <QPushButton>
#include <QString>
#include <QWidget>

class VbTimer;

// The configuration window. It is also where the show finds its settings, and the form that
// hands over between a show and the rest of the program.
class frmConfig : public QWidget, public FormSingleton<frmConfig> {
    Q_OBJECT
public:
    frmConfig();
    ~frmConfig() override;
    void beforeUnload();

    void Initialize();
    void RunSaver();
    void RunConfig();
    void cmdRunShow_Click();
    void StopShowTimer_Timer();
    void CloseProgramFromConfig();
    void CheckForRemainingList();

    void cmdOk_Click();
    void cmdCancel_Click();
    void cmdApply_Click();
    void cmdHelp_Click();
    void Form_Unload();
    void SavePrefs();

    bool GetApplyWasEnabled() const { return ApplyWasEnabled; }

    bool FormIsInitializing = false;
    bool ApplyWasEnabled = false;
    QString PrefsFileName;

    QPushButton* cmdRunShow = nullptr;
    QPushButton* cmdOk = nullptr;
    QPushButton* cmdCancel = nullptr;
    QPushButton* cmdApply = nullptr;
    QPushButton* cmdHelp = nullptr;
    QLabel* lblVersion = nullptr;

    VbTimer* StopShowTimer = nullptr;
    VbTimer* ScrollDemoTimer = nullptr;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void CenterOnScreen();
    bool unloading_ = false;
};
