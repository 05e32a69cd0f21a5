#pragma once

#include <QSettings>
#include <QString>
#include <QVariant>

#include <vector>

/// How the store of user settings looks on the disk: UTF-8 text in the manner of an INI file.
///
///     # Norvane user settings. The last line tells that the file is whole: keep it.
///     [52]
///     Color_version=@int(11)
///     TOLV_TEXT_COLOR=#202020
///     [21/hierarchy]
///     Name_column_size=@int(140)
///     # End of the user settings.
///
/// A file that does not begin and end with these two lines, or has a line between them that is neither a folder, a
/// value, a remark nor blank, is damaged. Blanks count. Names and texts carry control characters, and names also the
/// signs of the format, as "%" and two hexadecimal digits or "%u" and four. The empty name is a bare "%".
///
/// Towards QSettings a value has the key `folder/=name`: since no folder begins with "=", removing a value never
/// takes a folder of its name along. The values that QSettings holds are the texts behind the "=" of the file, so
/// that a value whose type this process does not know passes through unharmed.
namespace CFGQ_REGISTRY_FORMAT
{
/// Writes a name so that it can stand in a folder line or before a "=".
QString escape_name(const QString& name);

/// Takes escape_name() back; false where the text is not of that form.
bool unescape_name(const QString& text, QString* name);

/// Key of a value for QSettings. `folder` is a list of escaped names divided by "/".
QString make_key(const QString& folder, const QString& name);

/// Takes make_key() back; false for keys of another form.
bool split_key(const QString& key, QString* folder, QString* name);

/// Writes a value as text: strings, bool, int and finite double readable, all other types as what a QDataStream of
/// Qt 5.15 makes of them. False for a type that no data stream takes.
bool encode(const QVariant& value, QString* text);

/// Takes encode() back; false where the text is not of that form or its type is not known in this process.
bool decode(const QString& text, QVariant* value);

/// One value as a store has it.
struct ROW
{
    QString folder; ///< a list of escaped names divided by "/"
    QString name;
    QString text; ///< as encode() writes it
};

/// Reads a store from the start of an open device, the rows in the order of the file: of two rows for the same value
/// the later one counts. False where the store is damaged; `rows` is then of no use.
bool read_rows(QIODevice& device, std::vector<ROW>* rows);

/// The same for QSettings.
bool read(QIODevice& device, QSettings::SettingsMap& map);

/// Writes a store.
bool write(QIODevice& device, const QSettings::SettingsMap& map);

/// The format by which QSettings reads and writes a store, case-sensitive.
QSettings::Format get_settings_format();
} // namespace CFGQ_REGISTRY_FORMAT
