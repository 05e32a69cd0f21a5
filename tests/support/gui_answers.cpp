#include "gui_answers.h"

#include "gui_driver.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QMenu>
#include <QPointer>
#include <QTimer>
#include <QWindow>

#include <deque>

namespace
{
constexpr int PATIENCE_MILLISECONDS = 5000;    // for a window that shall come up or go away
constexpr int LONELINESS_MILLISECONDS = 20000; // for a window that nobody answers

template <typename T>
struct ANSWER
{
    std::function<void(T*)> function;
    TEST_PLACE place;
};

bool is_on_screen(const QWidget* window)
{
    return window->windowHandle() != nullptr && window->windowHandle()->isExposed();
}

void close_window(QWidget* window)
{
    if (auto* const dialog = qobject_cast<QDialog*>(window))
        dialog->reject();
    else
        window->close();
}

/// Runs a function from the event loop as soon as a condition holds, and another one if it does not in time.
void run_when(QObject* context, const std::function<bool()>& condition, const std::function<void()>& function,
              const std::function<void()>& too_late)
{
    auto* const timer = new QTimer(context);
    timer->setSingleShot(true);
    auto left = std::make_shared<int>(PATIENCE_MILLISECONDS);
    QObject::connect(timer, &QTimer::timeout, context,
                     [=]
                     {
                         if (!condition() && --*left > 0)
                         {
                             timer->start(1);
                             return;
                         }
                         timer->deleteLater();
                         if (*left > 0)
                             function();
                         else
                             too_late();
                     });
    timer->start(0);
}

class ANSWERS : public QObject
{
public:
    std::deque<ANSWER<QDialog>> dialog_answers;
    std::deque<ANSWER<QMenu>> menu_answers;

    static ANSWERS& get()
    {
        static ANSWERS* const answers = new ANSWERS;
        return *answers;
    }

    bool eventFilter(QObject* receiver, QEvent* event) override
    {
        if (event->type() != QEvent::Show || !receiver->isWidgetType())
            return false;
        auto* const window = static_cast<QWidget*>(receiver);
        if (auto* const menu = qobject_cast<QMenu*>(window); menu != nullptr && menu->windowType() == Qt::Popup)
            take_up(menu, &menu_answers);
        else if (auto* const dialog = qobject_cast<QDialog*>(window); dialog != nullptr && dialog->isModal())
            take_up(dialog, &dialog_answers);
        return false;
    }

private:
    template <typename T>
    void take_up(T* window, std::deque<ANSWER<T>>* answers)
    {
        if (answers->empty())
        {
            watch_lonely(window);
            return;
        }
        const ANSWER<T> answer = std::move(answers->front());
        answers->pop_front();
        const QPointer<T> guard(window);
        run_when(
            this, [=] { return guard == nullptr || is_on_screen(guard); },
            [=]
            {
                if (guard == nullptr || !guard->isVisible())
                {
                    ADD_FAILURE_AT(answer.place.file, answer.place.line) << "the window went away before its answer";
                    return;
                }
                answer.function(guard);
                if (guard != nullptr && guard->isVisible())
                    expect_closed(guard, answer.place);
            },
            [=]
            {
                ADD_FAILURE_AT(answer.place.file, answer.place.line) << "the window did not come up on the screen";
                if (guard != nullptr)
                    close_window(guard);
            });
    }

    void expect_closed(QWidget* window, const TEST_PLACE& place)
    {
        const QPointer<QWidget> guard(window);
        run_when(
            this, [=] { return guard == nullptr || !guard->isVisible(); }, [] {},
            [=]
            {
                ADD_FAILURE_AT(place.file, place.line)
                    << guard->metaObject()->className() << " \"" << guard->objectName().toStdString()
                    << "\" stayed open behind its answer";
                close_window(guard);
            });
    }

    void watch_lonely(QWidget* window)
    {
        const QPointer<QWidget> guard(window);
        QTimer::singleShot(LONELINESS_MILLISECONDS, this,
                           [=]
                           {
                               if (guard == nullptr || !guard->isVisible())
                                   return;
                               ADD_FAILURE() << "nobody answers " << guard->metaObject()->className() << " \""
                                             << guard->objectName().toStdString() << "\" \""
                                             << guard->windowTitle().toStdString() << "\"";
                               close_window(guard);
                           });
    }
};

QString get_plain_text(QString text)
{
    text.replace(QLatin1String("&&"), QString(QChar(1)));
    text.remove(QLatin1Char('&'));
    text.replace(QChar(1), QLatin1Char('&'));
    return text.section(QLatin1Char('\t'), 0, 0);
}

void click_button(QDialog* dialog, const QString& text, const TEST_PLACE& place)
{
    QAbstractButton* const button = GUI_DRIVER::find_widget<QAbstractButton>(
        dialog,
        [&](const QAbstractButton* candidate)
        { return candidate->isVisible() && get_plain_text(candidate->text()) == text; },
        place, QStringLiteral("with the text \"%1\"").arg(text));
    if (button == nullptr || !GUI_DRIVER::can_reach(button, button->rect().center(), place))
        dialog->reject();
    else
        GUI_DRIVER::click(button, place);
}

void click_action(QMenu* menu, const QString& text, const TEST_PLACE& place)
{
    for (QAction* action : menu->actions())
    {
        if (!action->isVisible() || get_plain_text(action->text()) != text)
            continue;
        if (!action->isEnabled())
        {
            ADD_FAILURE_AT(place.file, place.line) << "the action \"" << text.toStdString() << "\" is disabled";
            menu->close();
            return;
        }
        GUI_DRIVER::click(menu, menu->actionGeometry(action).center(), Qt::LeftButton, Qt::NoModifier, place);
        return;
    }
    ADD_FAILURE_AT(place.file, place.line) << "the menu has no action \"" << text.toStdString() << "\"";
    menu->close();
}
} // namespace

void answer_next_dialog(const QString& button_text, TEST_PLACE place)
{
    answer_next_dialog([=](QDialog* dialog) { click_button(dialog, button_text, place); }, place);
}

void answer_next_dialog(std::function<void(QDialog*)> answer, TEST_PLACE place)
{
    ANSWERS::get().dialog_answers.push_back({std::move(answer), place});
}

void answer_next_menu(const QString& action_text, TEST_PLACE place)
{
    answer_next_menu([=](QMenu* menu) { click_action(menu, action_text, place); }, place);
}

void answer_next_menu(std::function<void(QMenu*)> answer, TEST_PLACE place)
{
    ANSWERS::get().menu_answers.push_back({std::move(answer), place});
}

void watch_for_answers()
{
    qApp->installEventFilter(&ANSWERS::get());
}

template <typename T>
static void report_unasked(std::deque<ANSWER<T>>* answers, const char* what)
{
    for (const ANSWER<T>& answer : *answers)
        ADD_FAILURE_AT(answer.place.file, answer.place.line) << "no " << what << " came up for this answer";
    answers->clear();
}

void check_answers()
{
    report_unasked(&ANSWERS::get().dialog_answers, "dialog");
    report_unasked(&ANSWERS::get().menu_answers, "menu");
}
