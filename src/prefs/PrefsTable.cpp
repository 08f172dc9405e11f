#include "prefs/PrefsTable.h"

#include "app/VbNumbers.h"

#include <charconv>
#include <cmath>

namespace prefs {

namespace {

// The field's whole number, checked against the range before it is cast: text from the file
// may hold any size of number.
double Rounded(const QString& text) {
    return vb::RoundHalfEven(vb::Val(text));
}

// A missing field reads as empty text.
QString FieldAt(const QStringList& fields, qsizetype i) {
    return i < fields.size() ? fields[i].trimmed() : QString();
}

const Row* FindRow(const Table& table, const QString& key, const QStringList& fields) {
    bool keyed = false;
    for (const Entry& entry : table) {
        if (!entry.row || entry.row->key != key) continue;
        if (!entry.row->selector) return &*entry.row;
        keyed = true;
        if (Rounded(FieldAt(fields, 1)) == *entry.row->selector) return &*entry.row;
    }
    if (keyed) throw ReadError("no such element");
    return nullptr;
}

} // namespace

int ToChk(const QString& text) {
    const double v = Rounded(text);
    if (!(v >= 0 && v <= 2)) throw ReadError("check box value");
    return static_cast<int>(v);
}

int ToIdx(const QString& text, int count) {
    const double v = Rounded(text);
    if (!(v >= -1 && v < count)) throw ReadError("list index");
    return static_cast<int>(v);
}

bool ToBool(const QString& text) {
    if (text.compare(QLatin1String("True"), Qt::CaseInsensitive) == 0) return true;
    if (text.compare(QLatin1String("False"), Qt::CaseInsensitive) == 0) return false;
    throw ReadError("truth value");
}

std::uint32_t ToColour(const QString& text) {
    const auto v = vb::CLng(vb::Val(text));
    if (!v) throw ReadError("colour");
    return static_cast<std::uint32_t>(*v);
}

float ToPct(const QString& text) {
    const auto v = vb::CSng(vb::Val(text));
    if (!v) throw ReadError("percentage");
    return *v;
}

int ToZone(const QString& text) {
    // Zones are cut down, not rounded: 95.9 is still the last quarter-hour.
    const auto v = vb::CInt(vb::Int(vb::Val(text)));
    if (!v) throw ReadError("zone");
    return *v;
}

QString ToNumberText(const QString& text) {
    return QString::number(Rounded(text), 'f', 0);
}

QString ChkText(bool value) {
    return value ? QStringLiteral("1") : QStringLiteral("0");
}

QString BoolText(bool value) {
    return value ? QStringLiteral("True") : QStringLiteral("False");
}

QString ColourText(std::uint32_t value) {
    return QString::number(static_cast<std::int32_t>(value));
}

QString PercentText(float value) {
    char buffer[32];
    auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return QString::fromLatin1(buffer, static_cast<int>(result.ptr - buffer));
}

QStringList WriteBody(const Table& table) {
    QStringList out;
    for (const Entry& entry : table) {
        if (!entry.row) {
            out << entry.text;
            continue;
        }
        const Row& row = *entry.row;
        if (row.written && !row.written()) continue;
        if (row.writeLines) {
            out << row.writeLines();
            continue;
        }
        QString line = row.key;
        if (row.selector) line += ',' + QString::number(*row.selector);
        QStringList after;
        for (const Field& field : row.fields) {
            if (field.kind == Kind::Line)
                after << field.get();
            else
                line += ',' + field.get();
        }
        out << line << after;
    }
    return out;
}

void ReadBody(const Table& table, const QStringList& lines) {
    qsizetype at = 0;
    const std::function<std::optional<QString>()> next = [&]() -> std::optional<QString> {
        if (at < lines.size()) return lines[at++];
        return std::nullopt;
    };
    while (at < lines.size()) {
        const QString text = next()->trimmed();
        if (text.isEmpty()) continue;
        const QStringList fields = text.split(',');
        const Row* row = FindRow(table, fields[0], fields);
        if (!row) continue;
        if (row->readLines) {
            row->readLines(fields, next);
            continue;
        }
        qsizetype i = row->selector ? 2 : 1;
        for (const Field& field : row->fields)
            field.set(field.kind == Kind::Line ? next().value_or(QString()).trimmed()
                                               : FieldAt(fields, i++));
        if (row->applied) row->applied();
    }
}

void ApplyInitial(const Table& table, bool factory) {
    for (const Entry& entry : table) {
        if (!entry.row) continue;
        if (entry.row->reset) {
            if (factory) entry.row->reset();
            continue;
        }
        for (const Field& field : entry.row->fields)
            if (field.factory == factory) field.set(field.initial);
    }
}

} // namespace prefs
