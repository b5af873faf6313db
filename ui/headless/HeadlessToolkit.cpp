#include "ui/headless/HeadlessToolkit.h"

#include "ui/Image.h"
#include "ui/Label.h"

#include <algorithm>

namespace ui {
namespace {

/// Sizes of a plausible font: 90 twips a character, 195 a line.
class HeadlessControlPeer final : public ControlPeer {
public:
    explicit HeadlessControlPeer(const Control& peerControl) : control{peerControl} {}
    void Update(Aspect) override {}
    Size Preferred(int width) const override
    {
        const int text = static_cast<int>(control.Caption().size()) * 90;
        const std::string_view type = control.TypeName();
        if (const auto* image = dynamic_cast<const Image*>(&control))
            return image->Box;
        if (const auto* label = dynamic_cast<const Label*>(&control)) {
            const int lines = width > 0 ? (text + width - 1) / width : 1;
            return {width > 0 ? std::min(text, width) : text, 195 * std::max(lines, label->LeastLines)};
        }
        if (type == "CheckBox" || type == "Frame")
            return {text + 270, 255};
        if (type == "UpDown")
            return {240, 315};
        if (type == "ListBox")
            return {2400, 1200};
        if (type == "TextBox" || type == "ComboBox")
            return {1500, 315};
        return {std::max(text + 240, 1125), 345};
    }

private:
    const Control& control;
};

} // namespace

class HeadlessFormPeer final : public FormPeer {
public:
    HeadlessFormPeer(HeadlessToolkit& peerToolkit, Form& peerForm) : toolkit{peerToolkit}, form{peerForm}
    {
        for (Control* control : form.Controls())
            control->SetPeer(std::make_unique<HeadlessControlPeer>(*control));
        client = {form.Placement().width - 240, form.Placement().height - 840};
    }

    void Update(Aspect aspect) override
    {
        if (aspect == Aspect::Placement) {
            client = {form.Placement().width - 240, form.Placement().height - 840};
            if (form.IsVisible())
                form.UserResizes(client);
        }
    }
    void Show() override
    {
        if (form.GetStyle() == Form::Style::Sizable)
            form.UserResizes(client);
    }
    void Hide() override {}
    Size ClientSize() const override { return client; }
    void FitClient(Size size) override { client = size; }
    void ShowPopup(Menu& menu, Point) override
    {
        if (auto act = std::exchange(toolkit.popup, nullptr))
            act(menu);
    }
    void BringToFront() override {}

private:
    HeadlessToolkit& toolkit;
    Form& form;
    Size client;
};

std::unique_ptr<FormPeer> HeadlessToolkit::CreatePeer(Form& form)
{
    return std::make_unique<HeadlessFormPeer>(*this, form);
}

void HeadlessToolkit::RunModal(Form& form)
{
    const Yield yield{*this};
    const auto script = modals.find(form.Name());
    if (script == modals.end()) {
        Unexpected.push_back("modal form " + form.Name());
        form.Unload();
        return;
    }
    const auto act = std::move(script->second);
    modals.erase(script);
    act(form);
    if (form.IsOpen()) {
        Unexpected.push_back("modal form " + form.Name() + " was left open");
        form.Unload();
    }
}

Answer HeadlessToolkit::ShowMessage(const MessageBox& message)
{
    const Yield yield{*this};
    Messages.push_back(message);
    if (OnMessage)
        OnMessage(message);
    const Answer otherwise = message.buttons == MessageButtons::YesNoCancel ? Answer::No : Otherwise(message.buttons);
    if (ThrowAwayMessages)
        return AnswerYes && otherwise == Answer::No ? Answer::Yes : otherwise;
    if (expected.empty() || expected.front().text != message.text || expected.front().icon != message.icon) {
        Unexpected.push_back("message " + message.text);
        return otherwise;
    }
    const Answer answer = expected.front().answer;
    expected.pop_front();
    return answer;
}

std::optional<std::string> HeadlessToolkit::BrowseForFolder(const std::string& prompt, const std::string&)
{
    if (FolderChoices.empty()) {
        Unexpected.push_back("folder chooser " + prompt);
        return std::nullopt;
    }
    auto choice = std::move(FolderChoices.front());
    FolderChoices.pop_front();
    return choice;
}

std::optional<std::string> HeadlessToolkit::OpenFile(const OpenFileDialog& dialog)
{
    FilesAsked.push_back(dialog);
    if (FileChoices.empty()) {
        Unexpected.push_back("file dialog " + dialog.title);
        return std::nullopt;
    }
    auto choice = std::move(FileChoices.front());
    FileChoices.pop_front();
    return choice;
}

void HeadlessToolkit::DoEvents()
{
    const Yield yield{*this};
    ++yields;
    if (Elapse)
        (void)Elapse({});
    if (InputHeld() && OnHeldYield)
        OnHeldYield();
    else if (!InputHeld() && OnYield)
        OnYield(yields);
}

bool HeadlessToolkit::WaitUntil(const std::function<bool()>& ended, std::chrono::milliseconds atMost)
{
    while (!ended()) {
        DoEvents();
        if (ended())
            return true;
        if (!Elapse || !Elapse(atMost))
            return false;
    }
    return true;
}

void HeadlessToolkit::Post(std::function<void()> task)
{
    posted.push_back(std::move(task));
}

void HeadlessToolkit::ExpectMessage(std::string text, Icon icon, Answer answer)
{
    expected.push_back({std::move(text), icon, answer});
}

void HeadlessToolkit::OnModal(std::string formName, std::function<void(Form&)> act)
{
    modals.emplace(std::move(formName), std::move(act));
}

void HeadlessToolkit::RunPosted()
{
    while (!posted.empty()) {
        const auto task = std::move(posted.front());
        posted.pop_front();
        task();
    }
}

std::vector<std::string> HeadlessToolkit::NotAsScripted() const
{
    std::vector<std::string> faults = Unexpected;
    if (ThrowAwayMessages)
        return faults;
    for (const Expected& message : expected)
        faults.push_back("no message " + message.text);
    for (const auto& [form, act] : modals)
        faults.push_back("no modal form " + form);
    if (popup)
        faults.emplace_back("no pop-up menu");
    for (const auto& folder : FolderChoices)
        faults.push_back("no folder chooser for " + folder.value_or("a cancel"));
    for (const auto& file : FileChoices)
        faults.push_back("no file dialog for " + file.value_or("a cancel"));
    return faults;
}

Form* HeadlessToolkit::Find(std::string_view formName) const
{
    const auto found =
        std::ranges::find_if(Forms(), [&](const Form* form) { return form->IsOpen() && form->Name() == formName; });
    return found == Forms().end() ? nullptr : *found;
}

} // namespace ui
