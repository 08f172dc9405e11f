#include "config/ConfigLook.h"

#include <QColor>
#include <QPalette>
#include <QWidget>

void ApplyConfigLook(QWidget* form) {
    form->setAttribute(Qt::WA_StyledBackground, true);
    // A dark palette lets the platform style draw boxes, arrows and indicators to match.
    QPalette dark = form->palette();
    dark.setColor(QPalette::Window, QColor(0x1e, 0x25, 0x30));
    dark.setColor(QPalette::WindowText, QColor(0xdf, 0xe6, 0xee));
    dark.setColor(QPalette::Base, QColor(0x15, 0x1b, 0x24));
    dark.setColor(QPalette::AlternateBase, QColor(0x1c, 0x23, 0x2e));
    dark.setColor(QPalette::Text, QColor(0xe8, 0xed, 0xf3));
    dark.setColor(QPalette::Button, QColor(0x3a, 0x46, 0x56));
    dark.setColor(QPalette::ButtonText, QColor(0xf2, 0xf5, 0xf8));
    dark.setColor(QPalette::Highlight, QColor(0x5f, 0xa8, 0xe8));
    dark.setColor(QPalette::HighlightedText, QColor(0x10, 0x14, 0x1a));
    dark.setColor(QPalette::ToolTipBase, QColor(0x2a, 0x33, 0x42));
    dark.setColor(QPalette::ToolTipText, QColor(0xe8, 0xed, 0xf3));
    dark.setColor(QPalette::Disabled, QPalette::WindowText, QColor(0x6f, 0x7b, 0x8a));
    dark.setColor(QPalette::Disabled, QPalette::Text, QColor(0x6f, 0x7b, 0x8a));
    dark.setColor(QPalette::Disabled, QPalette::ButtonText, QColor(0x7d, 0x88, 0x96));
    form->setPalette(dark);
    form->setStyleSheet(
        QLatin1Char('#') + form->objectName() +
        QStringLiteral(
            " { background: qlineargradient(x1:0, y1:0, x2:0, y2:1, stop:0 #243040, "
            "stop:1 #161c25); border: 1px solid #3b4757; }"
            "QLabel, QCheckBox, QRadioButton { color: #dfe6ee; }"
            "QCheckBox:disabled, QRadioButton:disabled, QLabel:disabled { color: #6f7b8a; }"
            "QCheckBox::indicator, QRadioButton::indicator { width: 13px; height: 13px;"
            " border: 1px solid #6b7c92; background: #151b24; }"
            "QCheckBox::indicator { border-radius: 3px; }"
            "QRadioButton::indicator { border-radius: 7px; }"
            "QCheckBox::indicator:checked { background: #5fa8e8; border-color: #7dbaf0;"
            " image: url(:/check.png); }"
            "QRadioButton::indicator:checked { background: qradialgradient(cx:0.5, cy:0.5,"
            " radius:0.5, fx:0.5, fy:0.5, stop:0 #f2f5f8, stop:0.38 #f2f5f8, stop:0.48 #5fa8e8,"
            " stop:1 #5fa8e8); border-color: #7dbaf0; }"
            "QCheckBox::indicator:disabled, QRadioButton::indicator:disabled {"
            " border-color: #3b4654; }"
            "QLabel[muted=\"true\"] { color: #9fb3c8; }"
            "QLabel[warning=\"true\"] { color: #ffb86b; }"
            "QFrame[page=\"true\"] { background: #202833; border: 1px solid #344052;"
            " border-radius: 5px; }"
            "QWidget[heading=\"true\"] { background: #2a3342; border-top-left-radius: 5px;"
            " border-top-right-radius: 5px; }"
            "QWidget[heading=\"true\"] QLabel, QWidget[heading=\"true\"] QCheckBox {"
            " font-weight: bold; color: #e8edf3; background: transparent; }"
            "#Portal, #PageHolder { background: transparent; }"
            "QLineEdit, QComboBox { color: #e8edf3; background: #151b24; border: 1px solid #3b4757;"
            " border-radius: 3px; padding: 2px 4px; }"
            "QComboBox QAbstractItemView { color: #e8edf3; background: #151b24; }"
            "QListWidget, QTreeWidget { color: #e8edf3; background: #151b24;"
            " border: 1px solid #3b4757; border-radius: 3px; }"
            "QHeaderView::section { color: #cfd8e3; background: #2a3342; border: none;"
            " border-right: 1px solid #3b4757; padding: 3px 6px; }"
            "#imgFileDetailsBacker { background: #202833; border: 1px solid #344052;"
            " border-radius: 5px; }"
            "QPushButton { color: #f2f5f8; background: #3a4656; border: 1px solid #56667a;"
            " border-radius: 5px; padding: 4px 12px; }"
            "QPushButton:hover { background: #465569; }"
            "QPushButton:pressed { background: #2c3643; }"
            "QPushButton:disabled { color: #7d8896; background: #2b333e; border-color: #3b4654; }"
            "QPushButton#cmdRunShow { background: #2f7dbf; border-color: #4b97d6; font-weight: "
            "bold; }"
            "QPushButton#cmdRunShow:hover { background: #3a8cd0; }"
            "QPushButton#cmdRunShow:disabled { background: #2b3b4c; }"
            "QScrollBar { background: #1a212b; border-radius: 5px; }"
            "QScrollBar:vertical { width: 10px; }"
            "QScrollBar:horizontal { height: 10px; }"
            "QScrollBar::handle { background: #46566b; border-radius: 5px; }"
            "QScrollBar::handle:vertical { min-height: 30px; }"
            "QScrollBar::handle:horizontal { min-width: 30px; }"
            "QScrollBar::add-line, QScrollBar::sub-line { height: 0px; width: 0px; }"
            "QScrollBar::add-page, QScrollBar::sub-page { background: none; }"));
}
