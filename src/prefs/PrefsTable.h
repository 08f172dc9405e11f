#pragma once

#include <QString>
#include <QStringList>
#include <cstdint>
#include <functional>
#include <optional>
#include <stdexcept>
#include <vector>

class QObject;

// The preferences file declared once: every key line with the fields it holds, how each field
// comes from the window and goes back into it, and what a new window shows. Writing, reading,
// the factory settings and the tracking of changes all walk this one table.
namespace prefs {

// A value the window cannot take. Reading stops there and keeps what came before it, as it
// always has: a hand-edited file must never cost the settings above the bad line.
struct ReadError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

enum class Kind {
    Chk,      // 0 or 1
    Idx,      // a list's index
    Text,     // as typed
    Number,   // typed, but passed through a whole number on reading
    Bool,     // "True" or "False"
    Colour,   // a 32-bit value, red in the low byte
    Pct,      // a single, in its shortest form
    Zone,     // a quarter-hour of the day
    Line,     // a whole line after the key line: a path may hold commas
    Position, // the first of six options that is set
    FontSize,
    FontName,
};

struct Field {
    Kind kind;
    std::function<QString()> get;
    // Takes the field's trimmed text; throws ReadError for a value the window cannot take.
    std::function<void(const QString&)> set;
    // What a new window shows, in the file's own form.
    QString initial;
    // The factory settings put the initial value back; where false, it is the value the window
    // is built with and a reset leaves alone.
    bool factory = true;
    // The controls a person changes, for the tracking of changes; none where a handler of its
    // own reports the change.
    std::vector<QObject*> controls;
};

struct Row {
    QString key;
    // Rows that share a key are told apart by their first field (LAYOUT,2 ... LAYOUT,0).
    std::optional<int> selector;
    std::vector<Field> fields;
    // Runs after a successful read of the row: what the window does beyond taking the values.
    std::function<void()> applied;
    // A row that is left out of the file while this says no.
    std::function<bool()> written;
    // Rows of a form of their own (a counted list of lines, a flag without fields) replace the
    // field-by-field writing, reading and reset with these.
    std::function<QStringList()> writeLines;
    // nextLine gives nothing at the end of the file.
    std::function<void(const QStringList& fields,
                       const std::function<std::optional<QString>()>& nextLine)>
        readLines;
    std::function<void()> reset;
};

// A line of the file in writing order: fixed text, or a row.
struct Entry {
    QString text;
    std::optional<Row> row;
};
using Table = std::vector<Entry>;

// The body of the file, line by line.
QStringList WriteBody(const Table& table);
// Applies the body's lines to the window through the table; unknown keys and comments are
// passed over. Throws ReadError where a value cannot be taken.
void ReadBody(const Table& table, const QStringList& lines);
// Puts back the factory settings (factory is true), or the values a window is built with.
void ApplyInitial(const Table& table, bool factory);

// The conversions of the file's fields; each throws ReadError where the window's control would
// refuse the value.
int ToChk(const QString& text);
int ToIdx(const QString& text, int count);
bool ToBool(const QString& text);
std::uint32_t ToColour(const QString& text);
float ToPct(const QString& text);
int ToZone(const QString& text);
// The number at the front, rounded, as text ("junk" gives "0", "7.5" gives "8").
QString ToNumberText(const QString& text);
QString ChkText(bool value);
QString BoolText(bool value);
QString ColourText(std::uint32_t value);
// A percentage in the shortest decimal form that reads back to the same single.
QString PercentText(float value);

} // namespace prefs
