#include "profiles/ProfileManager.h"

#include "platform/Path.h"
#include "platform/Text.h"
#include "profiles/FieldChecks.h"
#include "profiles/StringId.h"

#include <algorithm>

namespace profiles {

namespace text = platform::text;
namespace error = platform::error;
using platform::Hive;
using platform::RegistryValue;
using platform::Result;
using platform::ValueType;

namespace {

constexpr std::string_view invalidInNames[] = {"\\", "/", "?", ":", "\"", "<", ">", "|", "*"};

constexpr std::array<Field, FieldCount> writeOrder{
    Field::FirstName,    Field::LastName,     Field::Title,     Field::CompanyName,     Field::AddressLine1,
    Field::AddressLine2, Field::City,         Field::State,     Field::ZipCode,         Field::Country,
    Field::PhoneOffice,  Field::PhoneHome,    Field::PhoneCell, Field::PhoneFax,        Field::PhoneTollFree,
    Field::Pager,        Field::EmailAddress, Field::Website,   Field::DisclaimerLine1, Field::DisclaimerLine2};

bool IsControl(char c)
{
    return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
}

std::string Comparable(std::string_view name)
{
    return text::Folded(text::Trimmed(name));
}

} // namespace

std::string WithoutDefaultSuffix(std::string_view name)
{
    if (!name.contains(DefaultSuffix))
        return std::string{name};
    return std::string{name.substr(0, name.size() - DefaultSuffix.size())};
}

std::string ProfileKey(std::string_view name)
{
    return platform::path::Join(ProfilesKey, name);
}

bool ProfileManager::ListProfiles()
{
    auto found = program.platform.registry.SubKeys(Hive::CurrentUser, ProfilesKey);
    names.clear();
    if (found)
        names = std::move(*found);
    return Tell(found || found.error() == error::FileNotFound, str::EnumerationFailed);
}

std::string ProfileManager::DisplayName(const std::string& name) const
{
    return IsDefault(name) ? name + std::string{DefaultSuffix} : name;
}

int ProfileManager::IndexOf(std::string_view listed) const
{
    const std::string wanted = Comparable(WithoutDefaultSuffix(listed));
    const auto found = std::ranges::find(names, wanted, Comparable);
    return found == names.end() ? -1 : static_cast<int>(found - names.begin());
}

std::vector<std::string> ProfileManager::DisplayNames() const
{
    const std::string defaultName = Comparable(GetDefaultProfile());
    std::vector<std::string> shown;
    shown.reserve(names.size());
    for (const std::string& name : names)
        shown.push_back(Comparable(name) == defaultName ? name + std::string{DefaultSuffix} : name);
    return shown;
}

bool ProfileManager::IsDefault(std::string_view name) const
{
    return Comparable(name) == Comparable(GetDefaultProfile());
}

bool ProfileManager::ProfileExists(std::string_view name) const
{
    return !name.empty() && program.platform.registry.ValueNames(Hive::CurrentUser, ProfileKey(name)).has_value();
}

bool ProfileManager::IsProfileEmpty(std::string_view listed)
{
    const std::string name = WithoutDefaultSuffix(listed);
    LastWasEmpty = true;
    if (name.empty())
        return true;
    const std::string key = ProfileKey(name);
    const auto look = [&](std::string_view value) { LastWasEmpty &= Read(key, value).value_or("").empty(); };
    for (std::size_t i = 0; i < FieldCount; ++i)
        if (static_cast<Field>(i) != Field::Pager) // a pager alone makes no sender
            look(ValueName(static_cast<Field>(i)));
    for (const ImageKind kind : AllImages)
        look(ValueName(kind));
    return LastWasEmpty;
}

void ProfileManager::LoadProfile(std::string_view listed)
{
    Current = {};
    const std::string name = WithoutDefaultSuffix(listed);
    if (name.empty())
        return;
    const std::string key = ProfileKey(name);
    for (std::size_t i = 0; i < FieldCount; ++i) {
        auto stored = Read(key, ValueName(static_cast<Field>(i)));
        Current.unread[i] = !stored;
        Current.texts[i] = std::move(stored).value_or("");
    }
    for (const ImageKind kind : AllImages) {
        auto stored = Read(key, ValueName(kind));
        Current.unreadImages[static_cast<std::size_t>(kind)] = !stored;
        Current[kind] = std::move(stored).value_or("");
    }
}

bool ProfileManager::SaveProfileText(std::string_view listed)
{
    const std::string name = WithoutDefaultSuffix(listed);
    if (name.empty())
        return true;
    const std::string key = ProfileKey(name);
    if (!program.platform.registry.CreateKey(Hive::CurrentUser, key))
        return Tell(false, str::SetValueFailed);
    bool saved = true;
    for (const Field field : writeOrder)
        if (!Current[field].empty() || !Current.unread[static_cast<std::size_t>(field)])
            saved &= Write(key, ValueName(field), Current[field]).has_value();
    return Tell(saved, str::SetValueFailed);
}

bool ProfileManager::SaveProfileImages(std::string_view listed)
{
    const std::string name = WithoutDefaultSuffix(listed);
    if (name.empty())
        return true;
    const std::string key = ProfileKey(name);
    bool saved = program.platform.registry.CreateKey(Hive::CurrentUser, key).has_value();
    for (const ImageKind kind : AllImages)
        if (!Current[kind].empty() || !Current.unreadImages[static_cast<std::size_t>(kind)])
            saved = saved && Write(key, ValueName(kind), Current[kind]).has_value();
    return Tell(saved, str::SetValueFailed);
}

Result<> ProfileManager::RestoreImage(std::string_view name, ImageKind kind)
{
    const std::string key = ProfileKey(WithoutDefaultSuffix(name));
    if (Read(key, ValueName(kind)) == Current[kind]) // an absent value need not become an empty one
        return {};
    return Write(key, ValueName(kind), Current[kind]);
}

bool ProfileManager::DeleteProfile(std::string_view listed)
{
    const std::string name = WithoutDefaultSuffix(listed);
    return Tell(!name.empty() && program.platform.registry.DeleteKey(Hive::CurrentUser, ProfileKey(name)).has_value(),
                str::DeleteValueFailed);
}

Result<> ProfileManager::CopyProfileValues(std::string_view from, std::string_view to)
{
    platform::Registry& registry = program.platform.registry;
    const std::string source = ProfileKey(from);
    const std::string target = ProfileKey(to);
    const auto stored = registry.ValueNames(Hive::CurrentUser, source);
    if (!stored)
        return std::unexpected{stored.error()};
    if (const auto created = registry.CreateKey(Hive::CurrentUser, target); !created)
        return created;
    for (const std::string& name : *stored) {
        const auto value = registry.Query(Hive::CurrentUser, source, name);
        if (!value)
            return std::unexpected{value.error()};
        if (const auto written = registry.Set(Hive::CurrentUser, target, name, *value); !written)
            return written;
        const auto readBack = registry.Query(Hive::CurrentUser, target, name);
        if (!readBack || *readBack != *value)
            return std::unexpected{readBack ? error::GeneralFailure : readBack.error()};
    }
    return {};
}

std::optional<std::uint16_t> ProfileManager::ValidateProfileName(std::string_view typed)
{
    const std::string name = text::Trimmed(typed);
    if (name.empty())
        return str::InvalidProfileName;
    if (!IsAsciiLetter(name.front()) && !IsAsciiDigit(name.front()))
        return str::ProfileNameStart;
    // The mark of the default profile would be taken off again; control characters have no place in a folder's name.
    if (std::ranges::any_of(invalidInNames, [&](std::string_view part) { return name.contains(part); }) ||
        name.contains(DefaultSuffix) || std::ranges::any_of(name, IsControl))
        return str::InvalidProfileName;
    if (Comparable(name) == Comparable(program.Text(str::BlankProfile)))
        return str::InvalidProfileName;
    if (!ListProfiles())
        return str::None; // the user knows already
    const bool taken = std::ranges::any_of(names, [&](const auto& n) { return text::EqualIgnoringCase(n, name); });
    if (taken || ProfileExists(name))
        return str::ProfileNameTaken;
    return std::nullopt;
}

std::optional<std::string> ProfileManager::Read(std::string_view key, std::string_view value) const
{
    const auto stored = program.platform.registry.Query(Hive::CurrentUser, key, value);
    if (!stored)
        return stored.error() == error::FileNotFound ? std::optional<std::string>{""} : std::nullopt;
    if (stored->type != ValueType::String && stored->type != ValueType::ExpandString)
        return std::nullopt;
    return stored->data;
}

Result<> ProfileManager::Write(std::string_view key, std::string_view value, const std::string& text)
{
    return program.platform.registry.Set(Hive::CurrentUser, key, value, {ValueType::String, text});
}

bool ProfileManager::Tell(bool worked, std::uint16_t message)
{
    if (!worked)
        program.messages.Stop(message);
    return worked;
}

} // namespace profiles
