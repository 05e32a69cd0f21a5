#include "msg_prompt.h"

#include "msg_prompt_p.h"

#include <mutex>
#include <set>

namespace
{
/// The addresses of all prompts there are. Never destroyed: prompts may be static objects.
struct LIVE_PROMPTS
{
    std::mutex mutex;
    std::set<const void*> addresses;
};

LIVE_PROMPTS& live_prompts()
{
    static LIVE_PROMPTS* prompts = new LIVE_PROMPTS;
    return *prompts;
}
} // namespace

bool msg_is_live_prompt(const void* address)
{
    LIVE_PROMPTS& prompts = live_prompts();
    const std::lock_guard<std::mutex> lock(prompts.mutex);
    return prompts.addresses.count(address) != 0;
}

MSG_PROMPT::MSG_PROMPT(MSG_PROMPT_TYPE type) : m_type(type)
{
    LIVE_PROMPTS& prompts = live_prompts();
    const std::lock_guard<std::mutex> lock(prompts.mutex);
    prompts.addresses.insert(this);
}

MSG_PROMPT::~MSG_PROMPT()
{
    LIVE_PROMPTS& prompts = live_prompts();
    const std::lock_guard<std::mutex> lock(prompts.mutex);
    prompts.addresses.erase(this);
}

MSG_PROMPT_TYPE MSG_PROMPT::get_type() const
{
    return m_type;
}

int MSG_PROMPT::get_default_result() const
{
    switch (m_type)
    {
    case MSG_PROMPT_TYPE_CO:
        return MSG_PROMPT_RESULT_CANCEL;
    case MSG_PROMPT_TYPE_O:
    case MSG_PROMPT_TYPE_OC:
        return MSG_PROMPT_RESULT_OK;
    case MSG_PROMPT_TYPE_RC:
        return MSG_PROMPT_RESULT_RETRY;
    case MSG_PROMPT_TYPE_YNC:
    case MSG_PROMPT_TYPE_YN:
        return MSG_PROMPT_RESULT_YES;
    case MSG_PROMPT_TYPE_NYC:
        return MSG_PROMPT_RESULT_NO;
    case MSG_PROMPT_TYPE_ARI:
        return MSG_PROMPT_RESULT_ABORT;
    }
    return MSG_PROMPT_RESULT_OK;
}

bool MSG_PROMPT::get_offer_dont_show_again() const
{
    return m_offer_dont_show_again;
}

void MSG_PROMPT::set_offer_dont_show_again(bool offer)
{
    m_offer_dont_show_again = offer;
}

bool MSG_PROMPT::get_dont_show_again() const
{
    return m_dont_show_again;
}

void MSG_PROMPT::set_dont_show_again(bool dont_show)
{
    m_dont_show_again = dont_show;
}

int MSG_PROMPT::display()
{
    return msg_get_display_in_force()->prompt_display(this);
}

#define MSG_DEFINE_PROMPT_KIND(KIND)                                                                                   \
    MSG_##KIND::MSG_##KIND() : MSG_PROMPT(MSG_PROMPT_TYPE_##KIND)                                                      \
    {                                                                                                                  \
    }                                                                                                                  \
    MSG_##KIND::~MSG_##KIND() = default;
MSG_DEFINE_PROMPT_KIND(CO)
MSG_DEFINE_PROMPT_KIND(O)
MSG_DEFINE_PROMPT_KIND(RC)
MSG_DEFINE_PROMPT_KIND(OC)
MSG_DEFINE_PROMPT_KIND(YNC)
MSG_DEFINE_PROMPT_KIND(YN)
MSG_DEFINE_PROMPT_KIND(NYC)
MSG_DEFINE_PROMPT_KIND(ARI)
#undef MSG_DEFINE_PROMPT_KIND
