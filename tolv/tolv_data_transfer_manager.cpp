#include "tolv_data_transfer_manager.h"

#include "tolv_assignment.h"
#include "tolv_check.h"
#include "tolv_instance_name.h"
#include "tolv_mem.h"

#include <QClipboard>
#include <QDataStream>
#include <QGuiApplication>

TOLV_MEM_INITIALIZER();

namespace
{
QString get_string_list_format()
{
    return QStringLiteral("application/x-norvane_string_list_data");
}

QString get_id_list_format()
{
    return QStringLiteral("application/x-norvane_id_list_data");
}

QString get_region_id_list_format()
{
    return QStringLiteral("application/x-norvane_region_id_list_data");
}

QString get_assignment_list_format()
{
    return QStringLiteral("application/x-norvane_assignment_list_data");
}

QString get_instance_name_list_format()
{
    return QStringLiteral("application/x-norvane_instance_name_list_data");
}

/// The clipboard, null without an application. Qt itself would warn about that.
QClipboard* get_clipboard()
{
    return qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr ? QGuiApplication::clipboard()
                                                                                   : nullptr;
}

/// The payload of a list: `write` puts each record on the stream.
template <typename LIST, typename WRITE>
QByteArray write_payload(const LIST& list, WRITE write)
{
    QByteArray payload;
    QDataStream stream(&payload, QIODevice::WriteOnly);
    for (const auto& record : list)
        write(stream, record);
    return payload;
}

/// Calls `read` for each record of a payload. Every record takes four bytes or more of it, or what is left; so the
/// number of records is bounded by the payload, and the longest text that a damaged count announces is not allocated
/// beyond what QDataStream takes in one step.
template <typename READ>
void read_payload(const QByteArray& payload, READ read)
{
    QDataStream stream(payload);
    while (!stream.atEnd())
        read(stream);
}

bool has_format(const QMimeData* data, const QString& format)
{
    TOLV_CHECK_TEXT(data != nullptr, "data != NULL");
    return data != nullptr && data->hasFormat(format);
}

QVariant read_numbers(const QMimeData* data, const QString& format)
{
    if (!has_format(data, format))
        return QVariant();
    QList<QVariant> numbers;
    read_payload(data->data(format),
                 [&](QDataStream& stream)
                 {
                     qint32 number = 0;
                     stream >> number;
                     numbers.append(QVariant(static_cast<unsigned int>(number)));
                 });
    return QVariant(numbers);
}

void write_assignment(QDataStream& stream, const TOLV_ASSIGNMENT& assignment)
{
    stream << assignment.m_field_1 << assignment.m_field_2 << assignment.m_field_3 << assignment.m_field_4
           << assignment.m_flag << assignment.m_field_5 << assignment.m_field_6 << assignment.m_field_7;
}

void read_assignment(QDataStream& stream, TOLV_ASSIGNMENT& assignment)
{
    stream >> assignment.m_field_1 >> assignment.m_field_2 >> assignment.m_field_3 >> assignment.m_field_4 >>
        assignment.m_flag >> assignment.m_field_5 >> assignment.m_field_6 >> assignment.m_field_7;
}

void write_instance_name(QDataStream& stream, const TOLV_INSTANCE_NAME& instance_name)
{
    stream << QString::fromLatin1(instance_name.m_name.data(), static_cast<int>(instance_name.m_name.size()))
           << static_cast<qint32>(instance_name.m_type) << instance_name.m_flag
           << static_cast<qint32>(instance_name.m_number) << static_cast<qint32>(instance_name.m_first_dimension_low)
           << static_cast<qint32>(instance_name.m_first_dimension_high)
           << static_cast<qint32>(instance_name.m_second_dimension_low)
           << static_cast<qint32>(instance_name.m_second_dimension_high);
}

void read_instance_name(QDataStream& stream, TOLV_INSTANCE_NAME& instance_name)
{
    QString name;
    qint32 type = TOLV_INSTANCE_NAME_TYPE_PLAIN;
    bool flag = false;
    qint32 number = 0;
    qint32 first_low = 0;
    qint32 first_high = 0;
    qint32 second_low = 0;
    qint32 second_high = 0;
    stream >> name >> type >> flag >> number >> first_low >> first_high >> second_low >> second_high;

    // Not the encoding of the writer, on purpose.
    instance_name.m_name = name.toLocal8Bit().toStdString();
    instance_name.m_number = static_cast<unsigned int>(number);
    instance_name.set_dimension(static_cast<TOLV_INSTANCE_NAME_TYPE>(type), static_cast<unsigned int>(first_low),
                                static_cast<unsigned int>(first_high), static_cast<unsigned int>(second_low),
                                static_cast<unsigned int>(second_high));
    instance_name.m_flag = flag;
}
} // namespace

TOLV_DATA_TRANSFER_MANAGER* TOLV_DATA_TRANSFER_MANAGER::m_instance = nullptr;

TOLV_DATA_TRANSFER_MANAGER* TOLV_DATA_TRANSFER_MANAGER::get_instance()
{
    if (m_instance == nullptr)
        m_instance = new TOLV_DATA_TRANSFER_MANAGER;
    return m_instance;
}

TOLV_DATA_TRANSFER_MANAGER::TOLV_DATA_TRANSFER_MANAGER() = default;

TOLV_DATA_TRANSFER_MANAGER::~TOLV_DATA_TRANSFER_MANAGER() = default;

// ---- The object under construction ----------------------------------------------------------------------------------

void TOLV_DATA_TRANSFER_MANAGER::create_mime_data()
{
    m_mime_data = new QMimeData;
}

void TOLV_DATA_TRANSFER_MANAGER::clear_mime_data()
{
    const QClipboard* const clipboard = get_clipboard();
    const bool is_on_clipboard = clipboard != nullptr && clipboard->mimeData(QClipboard::Clipboard) == m_mime_data;
    if (!is_on_clipboard)
        delete m_mime_data;
    m_mime_data = nullptr;
}

QMimeData* TOLV_DATA_TRANSFER_MANAGER::get_mime_data() const
{
    return m_mime_data;
}

QStringList TOLV_DATA_TRANSFER_MANAGER::get_mime_types() const
{
    return m_mime_data != nullptr ? m_mime_data->formats() : QStringList();
}

bool TOLV_DATA_TRANSFER_MANAGER::has_mime_data() const
{
    TOLV_CHECK_TEXT(m_mime_data != nullptr, "m_mime_data != NULL");
    return m_mime_data != nullptr;
}

// ---- Adding representations -----------------------------------------------------------------------------------------

void TOLV_DATA_TRANSFER_MANAGER::set_transfer_data(const QString& text)
{
    if (has_mime_data())
        m_mime_data->setText(text);
}

void TOLV_DATA_TRANSFER_MANAGER::set_transfer_data(const QByteArray& data, const QString& format)
{
    if (has_mime_data())
        m_mime_data->setData(format, data);
}

void TOLV_DATA_TRANSFER_MANAGER::set_transfer_data(const QVariant& image)
{
    if (has_mime_data())
        m_mime_data->setImageData(image);
}

void TOLV_DATA_TRANSFER_MANAGER::add_text_format(const QString& text)
{
    set_transfer_data(text);
}

void TOLV_DATA_TRANSFER_MANAGER::add_text_format(const QStringList& text_list)
{
    QString lines;
    for (const QString& text : text_list)
        lines += text + QLatin1Char('\n');
    if (!text_list.isEmpty())
        set_transfer_data(lines);
    set_transfer_data(write_payload(text_list, [](QDataStream& stream, const QString& text) { stream << text; }),
                      get_string_list_format());
}

void TOLV_DATA_TRANSFER_MANAGER::add_image_format(const QVariant& image)
{
    set_transfer_data(image);
}

void TOLV_DATA_TRANSFER_MANAGER::add_id_format(const QList<unsigned int>& id_list)
{
    add_number_format(id_list, get_id_list_format());
}

void TOLV_DATA_TRANSFER_MANAGER::add_region_id_format(const QList<unsigned int>& region_id_list)
{
    add_number_format(region_id_list, get_region_id_list_format());
}

void TOLV_DATA_TRANSFER_MANAGER::add_number_format(const QList<unsigned int>& numbers, const QString& format)
{
    set_transfer_data(
        write_payload(numbers, [](QDataStream& stream, unsigned int number) { stream << static_cast<qint32>(number); }),
        format);
}

void TOLV_DATA_TRANSFER_MANAGER::add_assignment_list_format(const TOLV_ASSIGNMENT_LIST& assignment_list)
{
    set_transfer_data(write_payload(assignment_list.get_list(), write_assignment), get_assignment_list_format());
}

void TOLV_DATA_TRANSFER_MANAGER::add_instance_name_format(const TOLV_INSTANCE_NAME_LIST& instance_name_list)
{
    set_transfer_data(write_payload(instance_name_list.get_list(), write_instance_name),
                      get_instance_name_list_format());
}

// ---- The clipboard --------------------------------------------------------------------------------------------------

void TOLV_DATA_TRANSFER_MANAGER::add_text_format_into_clipboard(const QString& text)
{
    add_text_format(text);
    inserting_to_clipboard(m_mime_data);
}

void TOLV_DATA_TRANSFER_MANAGER::add_text_format_into_clipboard(const QStringList& text_list)
{
    add_text_format(text_list);
    inserting_to_clipboard(m_mime_data);
}

void TOLV_DATA_TRANSFER_MANAGER::add_image_format_into_clipboard(const QVariant& image)
{
    add_image_format(image);
    inserting_to_clipboard(m_mime_data);
}

void TOLV_DATA_TRANSFER_MANAGER::add_id_format_into_clipboard(const QList<unsigned int>& id_list)
{
    add_id_format(id_list);
    inserting_to_clipboard(m_mime_data);
}

void TOLV_DATA_TRANSFER_MANAGER::add_assignment_list_format_into_clipboard(const TOLV_ASSIGNMENT_LIST& assignment_list)
{
    add_assignment_list_format(assignment_list);
    inserting_to_clipboard(m_mime_data);
}

void TOLV_DATA_TRANSFER_MANAGER::add_instance_name_format_into_clipboard(
    const TOLV_INSTANCE_NAME_LIST& instance_name_list)
{
    add_instance_name_format(instance_name_list);
    inserting_to_clipboard(m_mime_data);
}

void TOLV_DATA_TRANSFER_MANAGER::inserting_to_clipboard(QMimeData* mime_data)
{
    TOLV_CHECK_TEXT(mime_data != nullptr, "mime_data != NULL");
    QClipboard* const clipboard = get_clipboard();
    TOLV_CHECK_TEXT(clipboard != nullptr, "clipboard != NULL");
    if (mime_data != nullptr && clipboard != nullptr)
        clipboard->setMimeData(mime_data, QClipboard::Clipboard);
}

const QMimeData* TOLV_DATA_TRANSFER_MANAGER::get_mime_data_from_clipboard() const
{
    const QClipboard* const clipboard = get_clipboard();
    TOLV_CHECK_TEXT(clipboard != nullptr, "clipboard != NULL");
    return clipboard != nullptr ? clipboard->mimeData(QClipboard::Clipboard) : nullptr;
}

// ---- Reading --------------------------------------------------------------------------------------------------------

QVariant TOLV_DATA_TRANSFER_MANAGER::get_string_transfer_data(const QMimeData* data) const
{
    TOLV_CHECK_TEXT(data != nullptr, "data != NULL");
    return data != nullptr && data->hasText() ? QVariant(data->text()) : QVariant();
}

QVariant TOLV_DATA_TRANSFER_MANAGER::get_image_transfer_data(const QMimeData* data) const
{
    TOLV_CHECK_TEXT(data != nullptr, "data != NULL");
    return data != nullptr && data->hasImage() ? data->imageData() : QVariant();
}

QVariant TOLV_DATA_TRANSFER_MANAGER::get_string_list_transfer_data(const QMimeData* data) const
{
    if (!has_format(data, get_string_list_format()))
        return data != nullptr ? get_string_transfer_data(data) : QVariant();
    QStringList texts;
    read_payload(data->data(get_string_list_format()),
                 [&](QDataStream& stream)
                 {
                     QString text;
                     stream >> text;
                     texts.append(text);
                 });
    return QVariant(texts);
}

QVariant TOLV_DATA_TRANSFER_MANAGER::get_id_list_transfer_data(const QMimeData* data) const
{
    return read_numbers(data, get_id_list_format());
}

QVariant TOLV_DATA_TRANSFER_MANAGER::get_region_id_list_transfer_data(const QMimeData* data) const
{
    return read_numbers(data, get_region_id_list_format());
}

QVariant TOLV_DATA_TRANSFER_MANAGER::get_instance_name_list_transfer_data(const QMimeData* data) const
{
    if (!has_format(data, get_instance_name_list_format()))
        return QVariant();
    TOLV_INSTANCE_NAME_LIST list;
    read_payload(data->data(get_instance_name_list_format()),
                 [&](QDataStream& stream)
                 {
                     TOLV_INSTANCE_NAME instance_name;
                     read_instance_name(stream, instance_name);
                     list.insert(instance_name);
                 });
    return QVariant::fromValue(list);
}

QVariant TOLV_DATA_TRANSFER_MANAGER::get_assignment_list_transfer_data(const QMimeData* data) const
{
    if (!has_format(data, get_assignment_list_format()))
        return QVariant();
    TOLV_ASSIGNMENT_LIST list;
    read_payload(data->data(get_assignment_list_format()),
                 [&](QDataStream& stream)
                 {
                     TOLV_ASSIGNMENT assignment;
                     read_assignment(stream, assignment);
                     list.insert(assignment);
                 });
    return QVariant::fromValue(list);
}

QList<QVariant> TOLV_DATA_TRANSFER_MANAGER::get_all_transfer_data(const QMimeData* data) const
{
    TOLV_CHECK_TEXT(data != nullptr, "data != NULL");
    QList<QVariant> all;
    if (data == nullptr)
        return all;
    for (const QVariant& found :
         {get_string_transfer_data(data), get_string_list_transfer_data(data), get_id_list_transfer_data(data),
          get_region_id_list_transfer_data(data), get_image_transfer_data(data),
          get_instance_name_list_transfer_data(data), get_assignment_list_transfer_data(data)})
    {
        if (found.isValid() && !found.isNull())
            all.append(found);
    }
    return all;
}

QVariant TOLV_DATA_TRANSFER_MANAGER::get_from_clipboard(QVariant (TOLV_DATA_TRANSFER_MANAGER::*reader)(const QMimeData*)
                                                            const) const
{
    const QMimeData* const data = get_mime_data_from_clipboard();
    return data != nullptr ? (this->*reader)(data) : QVariant();
}

QVariant TOLV_DATA_TRANSFER_MANAGER::get_string_transfer_data_from_clipboard() const
{
    return get_from_clipboard(&TOLV_DATA_TRANSFER_MANAGER::get_string_transfer_data);
}

QVariant TOLV_DATA_TRANSFER_MANAGER::get_image_transfer_data_from_clipboard() const
{
    return get_from_clipboard(&TOLV_DATA_TRANSFER_MANAGER::get_image_transfer_data);
}

QVariant TOLV_DATA_TRANSFER_MANAGER::get_string_list_transfer_data_from_clipboard() const
{
    return get_from_clipboard(&TOLV_DATA_TRANSFER_MANAGER::get_string_list_transfer_data);
}

QVariant TOLV_DATA_TRANSFER_MANAGER::get_id_list_transfer_data_from_clipboard() const
{
    return get_from_clipboard(&TOLV_DATA_TRANSFER_MANAGER::get_id_list_transfer_data);
}

QVariant TOLV_DATA_TRANSFER_MANAGER::get_instance_name_list_transfer_data_from_clipboard() const
{
    return get_from_clipboard(&TOLV_DATA_TRANSFER_MANAGER::get_instance_name_list_transfer_data);
}

QVariant TOLV_DATA_TRANSFER_MANAGER::get_assignment_list_transfer_data_from_clipboard() const
{
    return get_from_clipboard(&TOLV_DATA_TRANSFER_MANAGER::get_assignment_list_transfer_data);
}

QList<QVariant> TOLV_DATA_TRANSFER_MANAGER::get_all_transfer_data_from_clipboard() const
{
    const QMimeData* const data = get_mime_data_from_clipboard();
    return data != nullptr ? get_all_transfer_data(data) : QList<QVariant>();
}
