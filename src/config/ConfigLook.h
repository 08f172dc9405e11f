#pragma once

#include <QString>

class QWidget;

// The settings window's dark look, for it and the small windows it opens. The form's own
// background is picked by its object name, which must be set first.
void ApplyConfigLook(QWidget* form);

template <class W> W* Named(W* w, const QString& name) {
    w->setObjectName(name);
    return w;
}

// Makes a control and names it after the member that holds it, so that the two cannot differ.
#define TV_NAMED(member, Type, ...) member = Named(new Type(__VA_ARGS__), QStringLiteral(#member))
