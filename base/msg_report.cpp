#include "msg.h"
#include "msg_crash_record_p.h"
#include "msg_prompt.h"
#include "xtcl.h"

#include <atomic>
#include <cstdio>

namespace
{
/// The display of the basic report: standard error, which asks nobody.
class BASIC_DISPLAY : public MSG_DISPLAY
{
public:
    void post_display(MSG_POST* post, unsigned int indent) override;
    int prompt_display(MSG_PROMPT* prompt) override;
    void internal_error_display(std::string text) override;
};

/// Writes one line as one piece, so that the lines of several threads stay whole.
void write_line(std::string line)
{
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
    std::fflush(stderr);
}

void BASIC_DISPLAY::post_display(MSG_POST* post, unsigned int indent)
{
    if (post == nullptr)
        return;
    write_line(post->get_display_text(indent));
    for (const std::unique_ptr<MSG_POST>& sub_post : post->get_sub_posts())
        post_display(sub_post.get(), indent + 1);
}

int BASIC_DISPLAY::prompt_display(MSG_PROMPT* prompt)
{
    if (prompt == nullptr)
        return MSG_PROMPT_RESULT_OK;
    write_line(prompt->get_text());
    return m_no_msg_box ? MSG_PROMPT_RESULT_OK : prompt->get_default_result();
}

void BASIC_DISPLAY::internal_error_display(std::string text)
{
    write_line(std::move(text));
}

/// Both reports live to the end of the process: a thread that is late finds them empty, not gone.
MSG_REPORT& default_report()
{
    static MSG_REPORT* report = new MSG_REPORT;
    return *report;
}

MSG_REPORT* make_basic_report()
{
    auto* report = new MSG_REPORT;
    report->set_display(new BASIC_DISPLAY);
    return report;
}

std::atomic<bool> s_is_begun{false};
} // namespace

MSG_DISPLAY::~MSG_DISPLAY() = default;

bool MSG_DISPLAY::m_no_msg_box = false;

MSG_REPORT::MSG_REPORT() = default;

MSG_DISPLAY* MSG_REPORT::get_display() const
{
    return m_display;
}

void MSG_REPORT::set_display(MSG_DISPLAY* display)
{
    m_display = display;
}

void MSG_REPORT::post(MSG_POST* post)
{
    MSG_DISPLAY* display = m_display;
    if (display != nullptr && post != nullptr)
        display->post_display(post, 0);
}

MSG_REPORT* msg_get_default_report()
{
    return s_is_begun ? &default_report() : nullptr;
}

MSG_REPORT* msg_get_basic_report()
{
    static MSG_REPORT* report = make_basic_report();
    return report;
}

MSG_DISPLAY* msg_get_display_in_force()
{
    static MSG_DISPLAY* last_resort = new BASIC_DISPLAY;
    for (const MSG_REPORT* report : {msg_get_default_report(), msg_get_basic_report()})
    {
        MSG_DISPLAY* display = report != nullptr ? report->get_display() : nullptr;
        if (display != nullptr)
            return display;
    }
    return last_resort;
}

void msg_exe_init(int argc, const char** argv)
{
    if (s_is_begun)
        return;
    msg_crash_set_arguments(argc, argv);
    default_report().set_display(nullptr);
    xtcl_startup();
    MSG_CRASH_REPORT_MANAGER::arm_fatal_signals();
    s_is_begun = true;
}

void msg_exe_fini()
{
    s_is_begun = false;
    default_report().set_display(nullptr);
    xtcl_shutdown();
    MSG_CRASH_REPORT_MANAGER::disarm_fatal_signals();
}
