// testing/AnsweringPrompt.h: a user who returns as told and remembers what was shown.
#pragma once
#include <deque>
#include <string>
#include <vector>

#include "support/Prompt.h"

class AnsweringPrompt : public Prompt::Port {
  public:
    struct Shown {
        std::int32_t number = 0;  // of a message
        std::int32_t buttons = 0;
        std::string text;  // of a question or an input box; of a message, what is put in place of `search`
        std::string search;
    };

    AnsweringPrompt() : earlier_(Prompt::Plug(this)) {}
    ~AnsweringPrompt() override { Prompt::Plug(earlier_); }

    std::int32_t Ask(std::int32_t, std::string& prompt, std::int32_t buttons, const std::string&) override {
        asked.push_back({0, buttons, prompt, {}});
        return answer;
    }
    std::string Input(const std::string& prompt, const std::string&, const std::string& defaultText,
                      bool& cancelled) override {
        inputs.push_back({0, 0, prompt, {}});
        cancelled = typed.empty();
        if (cancelled) return defaultText;
        std::string text = typed.front();
        typed.pop_front();
        return text;
    }
    std::int32_t Message(std::int32_t, std::int32_t number, std::int32_t buttons, const std::string& search1,
                         const std::string& replace1, const std::string&, const std::string&, std::int32_t) override {
        messages.push_back({number, buttons, replace1, search1});
        return answer;
    }

    std::int32_t answer = 1;
    std::deque<std::string> typed;  // into the next input boxes; then they are cancelled
    std::vector<Shown> asked, inputs, messages;

  private:
    Prompt::Port* earlier_;
};
