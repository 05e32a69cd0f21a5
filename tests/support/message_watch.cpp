#include "message_watch.h"

#include "msg.h"

#include <gtest/gtest.h>

#include <QStringList>

#include <algorithm>
#include <map>
#include <mutex>
#include <vector>

namespace
{
struct EXPECTATION
{
    QString part;
    QRegularExpression expression;
    int count = 0;

    bool fits(const QString& text) const
    {
        return part.isNull() ? expression.match(text).hasMatch() : text.contains(part);
    }
    QString describe() const
    {
        return part.isNull() ? QStringLiteral("/%1/").arg(expression.pattern()) : QStringLiteral("\"%1\"").arg(part);
    }
};

/// Debug records that a scope expected.
struct EXCUSE
{
    std::string key;
    std::string part;
    int count;

    bool fits(const MSG_DEBUG_RECORD& record) const
    {
        return record.key == key && record.text.find(part) != std::string::npos;
    }
};

struct WATCH
{
    std::mutex mutex;
    QtMessageHandler next = nullptr;
    std::map<int, EXPECTATION> expectations;
    int last_id = 0;
    QStringList unexpected;
    std::vector<EXCUSE> excuses; // of the thread that runs the test, unguarded

    static WATCH& get()
    {
        static WATCH* const watch = new WATCH; // messages come until the very end of the process
        return *watch;
    }

    void note(const QString& kind, const QMessageLogContext& context, const QString& text)
    {
        const std::lock_guard<std::mutex> lock(mutex);
        const auto match = std::find_if(expectations.begin(), expectations.end(),
                                        [&](auto& entry) { return entry.second.fits(text); });
        if (match != expectations.end())
        {
            ++match->second.count;
            return;
        }
        QString line = QStringLiteral("%1: %2").arg(kind, text);
        if (context.file != nullptr)
            line += QStringLiteral(" (%1:%2)").arg(QString::fromLocal8Bit(context.file)).arg(context.line);
        unexpected << line;
    }
};

bool is_platform_noise(const QString& text)
{
    // The second one: the window manager asked about a window that was just being closed.
    return text.startsWith(QLatin1String("This plugin does not support ")) ||
           text.startsWith(QLatin1String("QXcbConnection: XCB error: 3 (BadWindow)"));
}

void watch_message(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    WATCH& watch = WATCH::get();
    if (!is_platform_noise(text))
    {
        if (type == QtWarningMsg)
            watch.note(QStringLiteral("warning"), context, text);
        else if (type == QtCriticalMsg)
            watch.note(QStringLiteral("critical"), context, text);
    }
    if (watch.next != nullptr)
        watch.next(type, context, text);
    else
        fprintf(stderr, "%s\n", qPrintable(qFormatLogMessage(type, context, text)));
}

int count_records(const std::string& key, const std::string& part)
{
    const EXCUSE wanted{key, part, 0};
    const std::vector<MSG_DEBUG_RECORD> records = msg_get_debug_records();
    return static_cast<int>(
        std::count_if(records.begin(), records.end(), [&](const auto& record) { return wanted.fits(record); }));
}

/// Descriptions of the debug records for which no scope asked.
QStringList take_unexpected_records()
{
    QStringList result;
    std::vector<EXCUSE>& excuses = WATCH::get().excuses;
    for (const MSG_DEBUG_RECORD& record : msg_get_debug_records())
    {
        const auto excuse = std::find_if(excuses.begin(), excuses.end(),
                                         [&](const EXCUSE& each) { return each.count > 0 && each.fits(record); });
        if (excuse != excuses.end())
            --excuse->count;
        else
            result << QStringLiteral("debug record under \"%1\": %2")
                          .arg(QString::fromStdString(record.key), QString::fromStdString(record.text));
    }
    excuses.clear();
    msg_clear_debug_records();
    return result;
}
} // namespace

void MESSAGE_WATCH::install()
{
    const QtMessageHandler old_handler = qInstallMessageHandler(watch_message);
    if (old_handler != watch_message)
        WATCH::get().next = old_handler;
}

void MESSAGE_WATCH::begin()
{
    install();
    WATCH& watch = WATCH::get();
    const std::lock_guard<std::mutex> lock(watch.mutex);
    watch.unexpected.clear();
    watch.excuses.clear();
    msg_clear_debug_records();
}

void MESSAGE_WATCH::end(TEST_PLACE place)
{
    WATCH& watch = WATCH::get();
    QStringList faults;
    {
        const std::lock_guard<std::mutex> lock(watch.mutex);
        faults.swap(watch.unexpected);
    }
    faults += take_unexpected_records();
    for (const QString& fault : faults)
        ADD_FAILURE_AT(place.file, place.line) << "unexpected " << fault.toStdString();
}

static int add_expectation(EXPECTATION expectation)
{
    WATCH& watch = WATCH::get();
    const std::lock_guard<std::mutex> lock(watch.mutex);
    watch.expectations.emplace(++watch.last_id, std::move(expectation));
    return watch.last_id;
}

SCOPED_EXPECTED_WARNING::SCOPED_EXPECTED_WARNING(const char* part, TEST_PLACE place) : m_place(place)
{
    EXPECTATION expectation;
    expectation.part = QString::fromUtf8(part);
    m_id = add_expectation(std::move(expectation));
}

SCOPED_EXPECTED_WARNING::SCOPED_EXPECTED_WARNING(const QRegularExpression& expression, TEST_PLACE place)
    : m_place(place)
{
    EXPECTATION expectation;
    expectation.expression = expression;
    m_id = add_expectation(std::move(expectation));
}

SCOPED_EXPECTED_WARNING::~SCOPED_EXPECTED_WARNING()
{
    WATCH& watch = WATCH::get();
    EXPECTATION expectation;
    {
        const std::lock_guard<std::mutex> lock(watch.mutex);
        expectation = watch.expectations.at(m_id);
        watch.expectations.erase(m_id);
    }
    if (expectation.count == 0)
        ADD_FAILURE_AT(m_place.file, m_place.line)
            << "the expected warning did not come: " << expectation.describe().toStdString();
}

int SCOPED_EXPECTED_WARNING::get_count() const
{
    WATCH& watch = WATCH::get();
    const std::lock_guard<std::mutex> lock(watch.mutex);
    return watch.expectations.at(m_id).count;
}

SCOPED_EXPECTED_DEBUG_RECORD::SCOPED_EXPECTED_DEBUG_RECORD(const std::string& key, const std::string& part,
                                                           TEST_PLACE place)
    : m_key(key), m_part(part), m_count_before(count_records(key, part)), m_place(place)
{
}

SCOPED_EXPECTED_DEBUG_RECORD::~SCOPED_EXPECTED_DEBUG_RECORD()
{
    const int count = count_records(m_key, m_part) - m_count_before;
    if (count > 0)
        WATCH::get().excuses.push_back({m_key, m_part, count});
    else
        ADD_FAILURE_AT(m_place.file, m_place.line)
            << "the expected debug record did not come: \"" << m_part << "\" under \"" << m_key << "\"";
}
