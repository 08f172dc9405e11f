#pragma once

#include "app/Forms.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QString>
#include <QWidget>
#include <array>

class frmConfig;

// The dialog that makes a new list of one folder's photographs: choose the folder, scan it,
// then keep what the scan found as a list of the settings window.
class frmOpenFolder : public QWidget, public FormSingleton<frmOpenFolder> {
    Q_OBJECT
public:
    frmOpenFolder();
    ~frmOpenFolder() override;
    void beforeUnload() { Form_Unload(); }

    // Shows the dialog for the settings window, which stays disabled until the dialog goes.
    void ShowFor(frmConfig* owner);

    void Form_Load();
    void Form_Unload();
    void cmdChooseFolder_Click();
    void txtSelectedFOlder_Change();
    void chkRecurse_Click();
    void cmdScanFolder_Click();
    void cmdOk_Click();
    void cmdCancel_Click();

    // Captions of the rescan choices, and the days each stands for in a list file.
    static constexpr std::array<int, 5> kIntervalDays{4000, 1, 7, 14, 30};

    QLineEdit* txtSelectedFOlder = nullptr;
    QCheckBox* chkRecurse = nullptr;
    QComboBox* cmbScanInterval = nullptr;
    QLineEdit* txtTitle = nullptr;
    QListWidget* lstNewImages = nullptr;
    QLabel* lblStat = nullptr;
    QPushButton* cmdChooseFolder = nullptr;
    QPushButton* cmdScanFolder = nullptr;
    QPushButton* cmdOk = nullptr;
    QPushButton* cmdCancel = nullptr;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    QPointer<frmConfig> owner_;
};
