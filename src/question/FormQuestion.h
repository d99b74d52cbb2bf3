// question/FormQuestion.h: the form on which every message, question and input is shown.
//
// Shapes  The answer (support/Prompt.h) is a number in `RetVal`, empty while there is none. Sizes are pixels of the
// form's inside. Errors  none of its own; a window that cannot be made shows in Load. Owns    Its windows; it is shown
// by QuestionBox and unloaded with the end of its life. Effects While it is loaded, its window handle is published for
// the main application.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/forms/Form.h"
#include "question/QuestionLayout.h"

namespace QuestionBox {

// What the form needs of others: what opens a link, and a page of the help. Null: nothing happens.
struct Ports {
    void (*execApp)(const std::string& command, std::int32_t style) = nullptr;
    void (*callHelp)(const std::string& page, const std::string& htmlPage, std::int32_t flags) = nullptr;
};

// Returns what was plugged in before.
Ports Plug(const Ports& ports) noexcept;

// A question form is loaded.
extern bool formLoaded;

class FormQuestion : public platform::Form {
  public:
    FormQuestion();
    ~FormQuestion() override;

    // Texts of the prompt's own, before the form is shown.
    void SetPrompt(const std::string& prompt, const std::string& link);
    void SetMasked();

    // Sizes and places everything that is shown. A width or height of 0 is computed; without any size or place the
    // form is centred over its owner. `layoutOption`: the width at which the prompt is broken, at 96 dots an inch; 0:
    // as it reads well.
    void SetSizes(std::int32_t width, std::int32_t height, std::int32_t layoutOption, std::int32_t left,
                  std::int32_t top);
    void SelectInput();  // the whole content of the input that has the focus

    std::string HelpTopic;  // the page that ButtonHelp opens, which shows only where there is one

  protected:
    void OnLoad() override { Form_Load(); }
    void OnUnload() override { Form_Unload(); }
    void OnActivate() override { Form_Activate(); }
    void OnDeactivate() override { Form_Deactivate(); }
    void OnResize() override { Form_Resize(); }
    bool OnKeyDown(std::int32_t key) override;
    void OnClose() override;

  private:
    void Form_Activate();
    void Form_Deactivate();
    void Form_SetLanguage();
    void Form_Load();
    void Form_Unload();
    void Form_Resize_(platform::Size inside);
    void Form_Resize();

    void ButtonOKYes_Click();
    void ButtonNo_Click();
    void ButtonCancel_Click();
    void ButtonAll_Click();
    void ButtonHelp_Click();
    void LabelLink_Click();
    bool Button_KeyPress(char letter);
    bool Check1_KeyPress(char letter);
    void Caption_MouseDown(const platform::Mouse& mouse);
    void Caption_MouseMove(const platform::Mouse& mouse);
    void ImageEdge_MouseDown(const platform::Mouse& mouse);
    void ImageEdge_MouseMove(const platform::Mouse& mouse);
    void ImageEdge_MouseUp();
    void Timer1_Timer();

    void Close(std::int32_t answer);
    void ShowActiveLook();
    void ShowCaptionIn(std::uint32_t backColour, std::uint32_t textColour);
    void WireHandlers();
    [[nodiscard]] QuestionLayout::Request LayoutRequest(std::int32_t layoutOption);
    void Arrange(const QuestionLayout::Request& request);
    void ShowPromptIn(const QuestionLayout::Layout& layout);

    struct Point {
        std::int32_t x = 0, y = 0;
        bool operator==(const Point&) const = default;
    };
    Point dragStart_, edgeStart_, edgeLast_;
    std::int32_t layoutOption_ = 0;
    bool sizing_ = false;       // the edge is held
    bool busy_ = false;         // the form is being sized
    bool answered_ = false;     // cleared by every answer and by Form_Load; nothing sets it
    bool activated_ = false;    // once at least
    bool deactivated_ = false;  // the caption keeps its inactive look
    bool keepKey_ = true;       // the handle is published below the add-in's own key
};

}  // namespace QuestionBox
