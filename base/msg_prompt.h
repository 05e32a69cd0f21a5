#pragma once

#include "base_export.h"
#include "msg.h"

/// Kind of a prompt: which buttons it offers.
enum MSG_PROMPT_TYPE
{
    MSG_PROMPT_TYPE_CO = 0,  ///< OK and Cancel, Cancel the default
    MSG_PROMPT_TYPE_O = 1,   ///< OK
    MSG_PROMPT_TYPE_RC = 2,  ///< Retry and Cancel
    MSG_PROMPT_TYPE_OC = 3,  ///< OK and Cancel, OK the default
    MSG_PROMPT_TYPE_YNC = 4, ///< Yes, No and Cancel, Yes the default
    MSG_PROMPT_TYPE_YN = 5,  ///< Yes and No
    MSG_PROMPT_TYPE_NYC = 6, ///< Yes, No and Cancel, No the default
    MSG_PROMPT_TYPE_ARI = 7  ///< Abort, Retry and Ignore
};

/// Answer to a prompt.
enum MSG_PROMPT_RESULT
{
    MSG_PROMPT_RESULT_OK = 1,
    MSG_PROMPT_RESULT_CANCEL = 2,
    MSG_PROMPT_RESULT_ABORT = 3,
    MSG_PROMPT_RESULT_RETRY = 4,
    MSG_PROMPT_RESULT_IGNORE = 5,
    MSG_PROMPT_RESULT_YES = 6,
    MSG_PROMPT_RESULT_NO = 7
};

/// A message that wants an answer. The object must live until display() has returned; the address of one that is gone
/// is recognised and refused where a script hands it in.
class TOLV_BASE_EXPORT MSG_PROMPT : public MSG_BASE
{
public:
    explicit MSG_PROMPT(MSG_PROMPT_TYPE type);
    ~MSG_PROMPT() override;

    /// As given to the constructor.
    MSG_PROMPT_TYPE get_type() const;
    /// The answer that the default button gives (MSG_PROMPT_RESULT).
    int get_default_result() const;

    /// Whether the box offers "Don't show this message again"; off at first.
    bool get_offer_dont_show_again() const;
    void set_offer_dont_show_again(bool offer);
    /// What the user chose there; stored by the display.
    bool get_dont_show_again() const;
    void set_dont_show_again(bool dont_show);

    /// Shows the prompt through the display in force and returns the answer (MSG_PROMPT_RESULT). Any thread.
    int display();

private:
    MSG_PROMPT_TYPE m_type;
    bool m_offer_dont_show_again = false;
    bool m_dont_show_again = false;
};

/// One class for each kind.
#define MSG_DECLARE_PROMPT_KIND(KIND)                                                                                  \
    class TOLV_BASE_EXPORT MSG_##KIND : public MSG_PROMPT                                                              \
    {                                                                                                                  \
    public:                                                                                                            \
        MSG_##KIND();                                                                                                  \
        ~MSG_##KIND() override;                                                                                        \
    }
MSG_DECLARE_PROMPT_KIND(CO);
MSG_DECLARE_PROMPT_KIND(O);
MSG_DECLARE_PROMPT_KIND(RC);
MSG_DECLARE_PROMPT_KIND(OC);
MSG_DECLARE_PROMPT_KIND(YNC);
MSG_DECLARE_PROMPT_KIND(YN);
MSG_DECLARE_PROMPT_KIND(NYC);
MSG_DECLARE_PROMPT_KIND(ARI);
#undef MSG_DECLARE_PROMPT_KIND
