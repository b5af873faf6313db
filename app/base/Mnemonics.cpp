#include "app/base/Mnemonics.h"

#include "ui/Label.h"

#include <map>
#include <set>

namespace app {
namespace {

/// Longer labels are explanations.
constexpr std::size_t LongestLabel = 40;

struct Wish {
    ui::Control* control;
    std::vector<std::size_t> places; ///< in its caption, the best ones first
};

/// The lower-case letter or digit; 0 for anything else.
char KeyOf(char c)
{
    if (c >= 'A' && c <= 'Z')
        return static_cast<char>(c - 'A' + 'a');
    return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') ? c : '\0';
}

bool TakesMnemonic(const std::vector<ui::Control*>& controls, std::size_t index)
{
    const ui::Control& control = *controls[index];
    const std::string_view type = control.TypeName();
    if (type == "CommandButton" || type == "CheckBox")
        return true;
    if (type != "Label" || control.Caption().size() > LongestLabel || static_cast<const ui::Label&>(control).PlainText)
        return false;
    const ui::Control* next = index + 1 < controls.size() ? controls[index + 1] : nullptr;
    return next != nullptr && next->IsTabStop() && next->Caption().empty(); // what has a caption has its own
}

std::vector<std::size_t> PlacesIn(const std::string& caption)
{
    std::vector<std::size_t> first, others;
    for (std::size_t i = 0; i < caption.size(); ++i)
        if (KeyOf(caption[i]) != '\0')
            (i == 0 || caption[i - 1] == ' ' ? first : others).push_back(i);
    first.insert(first.end(), others.begin(), others.end());
    return first;
}

/// Matches wishes with letters: who has a letter that another one needs moves on to a further one of its own.
class Matching {
public:
    Matching(const std::vector<Wish>& wishes, const std::set<char>& taken) : wishes{wishes}, taken{taken} {}

    void Match()
    {
        for (std::size_t i = 0; i < wishes.size(); ++i) {
            std::set<char> tried = taken;
            (void)Place(i, tried);
        }
    }
    void Apply() const
    {
        for (const auto& [key, got] : owners)
            wishes[got.wish].control->SetCaption(
                std::string{wishes[got.wish].control->Caption()}.insert(got.place, "&"));
    }

private:
    struct Got {
        std::size_t wish;
        std::size_t place;
    };
    const std::vector<Wish>& wishes;
    const std::set<char>& taken;
    std::map<char, Got> owners;

    bool Place(std::size_t index, std::set<char>& tried)
    {
        const std::string& caption = wishes[index].control->Caption();
        for (const std::size_t place : wishes[index].places) {
            const char key = KeyOf(caption[place]);
            if (!tried.insert(key).second)
                continue;
            const auto owner = owners.find(key);
            if (owner == owners.end() || Place(owner->second.wish, tried)) {
                owners.insert_or_assign(key, Got{index, place});
                return true;
            }
        }
        return false;
    }
};

} // namespace

void AssignMnemonics(ui::Form& form)
{
    std::set<char> taken;
    std::vector<Wish> wishes;
    const auto& controls = form.Controls();
    for (std::size_t i = 0; i < controls.size(); ++i) {
        const std::string& caption = controls[i]->Caption();
        if (const auto mark = caption.find('&'); mark != std::string::npos && mark + 1 < caption.size())
            taken.insert(KeyOf(caption[mark + 1]));
        else if (TakesMnemonic(controls, i))
            wishes.push_back({controls[i], PlacesIn(caption)});
    }
    Matching matching{wishes, taken};
    matching.Match();
    matching.Apply();
}

std::string WithoutMnemonic(std::string caption)
{
    constexpr std::size_t bracketed = 4; // "(&X)"
    for (std::size_t at = 0; (at = caption.find("(&", at)) != std::string::npos; ++at)
        if (at + bracketed <= caption.size() && caption[at + bracketed - 1] == ')')
            caption.erase(at, bracketed);
    std::erase(caption, '&');
    return caption;
}

} // namespace app
