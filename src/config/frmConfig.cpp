#include "config/frmConfig.h"

#include "app/Common.h"
#include "app/modMain.h"
#include "platform/Cursor.h"
#include "platform/Dialogs.h"
#include "platform/Endpoints.h"
#include "platform/FileListing.h"
#include "platform/Shell.h"
#include "platform/VbTimer.h"
#include "prefs/MRegistry.h"
#include "show/frmSlideShow.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QPixmap>
#include <QScreen>
#include <QVBoxLayout>

frmConfig::frmConfig() {
    setObjectName(QStringLiteral("frmConfig"));
    setWindowTitle(QStringLiteral("Tessaview Settings"));
    setWindowIcon(QIcon(QStringLiteral(":/tessaview.png")));
    setAttribute(Qt::WA_StyledBackground, true);
    setStyleSheet(QStringLiteral(
        "#frmConfig { background: qlineargradient(x1:0, y1:0, x2:0, y2:1, stop:0 #27313f, "
        "stop:1 #151b24); }"
        "QLabel, QCheckBox, QRadioButton { color: #dfe6ee; }"
        "QFrame[objectName^=\"setPage\"] { background: rgba(255,255,255,14); border: 1px solid "
        "#3b4757; border-radius: 6px; }"
        "QScrollArea, #PageHolder { background: transparent; }"
        "QPushButton { color: #f2f5f8; background: #3a4656; border: 1px solid #56667a;"
        " border-radius: 5px; padding: 7px 16px; min-width: 80px; }"
        "QPushButton:hover { background: #465569; }"
        "QPushButton:pressed { background: #2c3643; }"
        "QPushButton:disabled { color: #7d8896; background: #2b333e; border-color: #3b4654; }"
        "QPushButton#cmdRunShow { background: #2f7dbf; border-color: #4b97d6; font-weight: bold; }"
        "QPushButton#cmdRunShow:hover { background: #3a8cd0; }"
        "QPushButton#cmdRunShow:disabled { background: #2b3b4c; }"));

    auto* logo = new QLabel(this);
    logo->setObjectName(QStringLiteral("imgLogo"));
    logo->setPixmap(QPixmap(QStringLiteral(":/logo.png"))
                        .scaled(120, 117, Qt::KeepAspectRatio, Qt::SmoothTransformation));
    logo->setAlignment(Qt::AlignCenter);
    BuildSettingsPanels();

    lblVersion = new QLabel(this);
    lblVersion->setObjectName(QStringLiteral("lblVersion"));
    lblVersion->setAlignment(Qt::AlignCenter);

    cmdRunShow = new QPushButton(QStringLiteral("Preview Slideshow"), this);
    cmdRunShow->setObjectName(QStringLiteral("cmdRunShow"));
    cmdHelp = new QPushButton(QStringLiteral("Help"), this);
    cmdHelp->setObjectName(QStringLiteral("cmdHelp"));
    cmdApply = new QPushButton(QStringLiteral("Apply Changes"), this);
    cmdApply->setObjectName(QStringLiteral("cmdApply"));
    cmdApply->setEnabled(false);
    cmdOk = new QPushButton(QStringLiteral("OK"), this);
    cmdOk->setObjectName(QStringLiteral("cmdOk"));
    cmdOk->setDefault(true);
    cmdCancel = new QPushButton(QStringLiteral("Cancel"), this);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));

    auto* top = new QHBoxLayout();
    top->addWidget(cmdRunShow);
    top->addStretch(1);
    top->addWidget(cmdHelp);
    auto* bottom = new QHBoxLayout();
    bottom->addWidget(cmdApply);
    bottom->addStretch(1);
    bottom->addWidget(cmdOk);
    bottom->addWidget(cmdCancel);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(22, 22, 22, 18);
    layout->setSpacing(14);
    auto* header = new QHBoxLayout();
    header->addWidget(logo);
    header->addWidget(lblVersion, 1);
    layout->addLayout(header);
    layout->addWidget(Portal, 1);
    layout->addLayout(top);
    layout->addLayout(bottom);
    QScreen* screen = QGuiApplication::primaryScreen();
    const int screenHeight = screen ? screen->geometry().height() : 768;
    setFixedSize(620, ConfigFormHeights(screenHeight).collapsed);

    connect(cmdRunShow, &QPushButton::clicked, this, [this] { cmdRunShow_Click(); });
    connect(cmdOk, &QPushButton::clicked, this, [this] { cmdOk_Click(); });
    connect(cmdCancel, &QPushButton::clicked, this, [this] { cmdCancel_Click(); });
    connect(cmdApply, &QPushButton::clicked, this, [this] { cmdApply_Click(); });
    connect(cmdHelp, &QPushButton::clicked, this, [this] { cmdHelp_Click(); });

    StopShowTimer = new VbTimer(100, false, this);
    StopShowTimer->setHandler([this] { StopShowTimer_Timer(); });
    ScrollDemoTimer = new VbTimer(50, false, this);
}

frmConfig::~frmConfig() = default;

void frmConfig::beforeUnload() {
    StopShowTimer->setEnabled(false);
    ScrollDemoTimer->setEnabled(false);
}

ConfigHeights ConfigFormHeights(int screenHeightPixels) {
    if (screenHeightPixels < 481) return {480, 520};
    if (screenHeightPixels <= 600) return {509, 600};
    if (screenHeightPixels <= 1023)
        return {screenHeightPixels - 100 - 150, screenHeightPixels - 100};
    return {screenHeightPixels - 200 - 150, screenHeightPixels - 200};
}

// Errors in any step are passed over so that the window always comes up.
void frmConfig::Initialize() {
    InstallDir = GetSetting(QStringLiteral("installDir"), ProgramFolder());
    chkDebug->setEnabled(false);
    PrefsFileName = InstallDir + QStringLiteral("/TView_Prefs.txt");
    cmbImageOrder->setCurrentIndex(0);
    cmbDSCFilter->setCurrentIndex(0);
    cmbFontSize->setCurrentIndex(2);
    FillFontComboBox();
    cmbBorderPercent->setCurrentIndex(10);
    cmbTileBackground->setCurrentIndex(0);
    cmbMultiMonOption->setCurrentIndex(0);
    const QString backgrounds = InstallDir + QStringLiteral("/Backgrounds");
    if (common::FileExists(backgrounds))
        lblBackgroundImagesFolder->setText(
            QStringLiteral("There are %1 backgrounds in the Backgrounds folder.")
                .arg(platform::FileList(backgrounds, QStringLiteral("*.*")).size()));
    else
        lblBackgroundImagesFolder->setText(QStringLiteral("Cannot find ") + InstallDir +
                                           QStringLiteral("/Backgrounds"));
    InitTimeList();
    DefaultPrefs();
    LoadPrefs();
    lblVersion->setText(QStringLiteral("Tessaview %1  (%2)").arg(ProgramVersion, ProgramDate));
}

void frmConfig::CenterOnScreen() {
    QScreen* screen = QGuiApplication::primaryScreen();
    if (!screen) return;
    const QRect s = screen->geometry();
    move(s.left() + (s.width() - width()) / 2, s.top() + (s.height() - height()) / 3);
}

void frmConfig::RunConfig() {
    FormIsInitializing = true;
    RunningFromConfig = true;
    Initialize();
    CenterOnScreen();
    show();
    CheckForRemainingList();
    FormIsInitializing = false;
    cmdApply->setEnabled(false);
}

void frmConfig::RunSaver() {
    FormIsInitializing = true;
    CenterOnScreen();
    Initialize();
    FormIsInitializing = false;
    cmdRunShow_Click();
}

void frmConfig::cmdRunShow_Click() {
    cmdRunShow->setEnabled(false);
    ExitShow = false;
    ScrollDemoTimer->setEnabled(false);
    cmdOk->setEnabled(false);
    cmdCancel->setEnabled(false);
    ApplyWasEnabled = cmdApply->isEnabled();
    cmdApply->setEnabled(false);
    frmSlideShow::instance()->StartShow();
}

void frmConfig::StopShowTimer_Timer() {
    StopShowTimer->setEnabled(false);
    CloseProgramFromConfig();
}

void frmConfig::CloseProgramFromConfig() {
    // Far past balance on purpose: whatever came between, the pointer comes back.
    while (platform::ShowCursor(true) < 6) {
    }
    ExitShow = true;
    frmSlideShow::unload();
    ExitShow = true;
    if (RunningFromConfig) {
        CheckForRemainingList();
        cmdRunShow->setEnabled(true);
        cmdOk->setEnabled(true);
        cmdCancel->setEnabled(true);
        cmdApply->setEnabled(ApplyWasEnabled);
        return;
    }
    Forms::UnloadAll();
}

// STAND-IN until the remaining list exists: there is never one to report.
void frmConfig::CheckForRemainingList() {}

void frmConfig::cmdApply_Click() {
    SavePrefs();
}

void frmConfig::cmdOk_Click() {
    cmdApply_Click();
    Form_Unload();
}

void frmConfig::cmdCancel_Click() {
    Form_Unload();
}

void frmConfig::cmdHelp_Click() {
    const QString helpFile = InstallDir + QStringLiteral("/Help/index.html");
    if (common::FileExists(helpFile)) {
        common::ShellResult r = common::OpenDocument(helpFile, QStringLiteral("open"));
        if (!r.ok()) platform::MsgBox(r.message, platform::vbExclamation);
        return;
    }
    platform::MsgBox(QStringLiteral("I can't find the help file on your computer.\r\nI'll try and "
                                    "open the Help files on the web."),
                     platform::vbInformation,
                     QStringLiteral("(please connect to the internet if you are not already "
                                    "connected)"));
    common::ShellResult r = common::OpenDocument(platform::OnlineHelpUrl(), QStringLiteral("open"));
    if (!r.ok()) platform::MsgBox(r.message, platform::vbExclamation);
}

void frmConfig::Form_Unload() {
    if (unloading_) return;
    unloading_ = true;
    Forms::UnloadAll();
}

void frmConfig::closeEvent(QCloseEvent* event) {
    event->accept();
    Form_Unload();
}
