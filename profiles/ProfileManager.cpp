#include "profiles/ProfileManager.h"

#include "platform/FileName.h"
#include "platform/Path.h"
#include "platform/Text.h"
#include "profiles/FieldChecks.h"
#include "profiles/RegistryTree.h"
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

constexpr std::array<Field, FieldCount> writeOrder{
    Field::FirstName,    Field::LastName,     Field::Title,     Field::CompanyName,     Field::AddressLine1,
    Field::AddressLine2, Field::City,         Field::State,     Field::ZipCode,         Field::Country,
    Field::PhoneOffice,  Field::PhoneHome,    Field::PhoneCell, Field::PhoneFax,        Field::PhoneTollFree,
    Field::Pager,        Field::EmailAddress, Field::Website,   Field::DisclaimerLine1, Field::DisclaimerLine2};

/// Of a value that is there and no text.
constexpr platform::Error ForeignType = error::InvalidParameter;

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
    return std::string{ProfilesKey}.append(1, '\\').append(name); // no path: a slash is part of a key's name
}

bool ProfileManager::ListProfiles()
{
    auto found = registry.SubKeys(Hive::CurrentUser, ProfilesKey);
    names.clear();
    if (found)
        names = std::move(*found);
    if (found || found.error() == error::FileNotFound)
        return true;
    messages.Plain(str::EnumerationFailed);
    return false;
}

std::string ProfileManager::Meant(std::string_view listed) const
{
    return std::ranges::find(names, listed) != names.end() ? std::string{listed} : WithoutDefaultSuffix(listed);
}

bool ProfileManager::IsDefault(std::string_view name) const
{
    return Comparable(name) == Comparable(GetDefaultProfile());
}

Result<bool> ProfileManager::IsStoredDefault(std::string_view name) const
{
    const auto stored = settings.Read(Section, "DefaultProfile");
    if (!stored)
        return std::unexpected{stored.error()};
    return Comparable(name) == Comparable(*stored);
}

bool ProfileManager::ProfileExists(std::string_view name) const
{
    return !name.empty() && registry.ValueNames(Hive::CurrentUser, ProfileKey(name)).has_value();
}

bool ProfileManager::IsProfileEmpty(std::string_view listed)
{
    const std::string name = Meant(listed);
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
    const std::string name = Meant(listed);
    if (name.empty())
        return;
    const std::string key = ProfileKey(name);
    const auto load = [&](std::string_view value, bool& unread) {
        const auto stored = Read(key, value);
        unread = !stored;
        Current.failed = Current.failed || (!stored && stored.error() != ForeignType);
        return stored.value_or("");
    };
    for (std::size_t i = 0; i < FieldCount; ++i)
        Current.texts[i] = load(ValueName(static_cast<Field>(i)), Current.unread[i]);
    for (const ImageKind kind : AllImages)
        Current[kind] = load(ValueName(kind), Current.unreadImages[static_cast<std::size_t>(kind)]);
}

bool ProfileManager::SaveProfileText(std::string_view listed)
{
    const std::string name = Meant(listed);
    if (name.empty())
        return true;
    const std::string key = ProfileKey(name);
    if (!access.CreateKey(key))
        return Tell(false, str::SetValueFailed);
    bool saved = true;
    for (const Field field : writeOrder)
        if (!Current[field].empty() || !Current.unread[static_cast<std::size_t>(field)])
            saved &= Write(key, ValueName(field), Current[field]).has_value();
    return Tell(saved, str::SetValueFailed);
}

bool ProfileManager::SaveProfileImages(std::string_view listed)
{
    const std::string name = Meant(listed);
    if (name.empty())
        return true;
    const std::string key = ProfileKey(name);
    bool saved = access.CreateKey(key);
    for (const ImageKind kind : AllImages)
        if (!Current[kind].empty() || !Current.unreadImages[static_cast<std::size_t>(kind)])
            saved = saved && Write(key, ValueName(kind), Current[kind]).has_value();
    return Tell(saved, str::SetValueFailed);
}

Result<> ProfileManager::RestoreImage(std::string_view name, ImageKind kind)
{
    const std::string key = ProfileKey(Meant(name));
    if (Read(key, ValueName(kind)) == Current[kind]) // an absent value need not become an empty one
        return {};
    return Write(key, ValueName(kind), Current[kind]);
}

bool ProfileManager::DeleteProfile(std::string_view listed)
{
    const std::string name = Meant(listed);
    return Tell(!name.empty() && DeleteTree(registry, ProfileKey(name)).has_value(), str::DeleteValueFailed);
}

Result<> ProfileManager::CopyProfileValues(std::string_view from, std::string_view to)
{
    const std::string source = ProfileKey(from);
    const std::string target = ProfileKey(to);
    const auto stored = registry.ValueNames(Hive::CurrentUser, source);
    if (!stored)
        return std::unexpected{stored.error()};
    if (const auto created = registry.CreateKey(Hive::CurrentUser, target); !created)
        return created;
    for (const std::string& name : *stored)
        if (const auto copied = CopyProfileData(source, target, name); !copied)
            return copied;
    const auto below = registry.SubKeys(Hive::CurrentUser, source);
    if (!below)
        return std::unexpected{below.error()};
    for (const std::string& subKey : *below)
        if (const auto copied = CopyProfileValues(std::string{from} + "\\" + subKey, std::string{to} + "\\" + subKey);
            !copied)
            return copied;
    return {};
}

Result<> ProfileManager::CopyProfileData(std::string_view source, std::string_view target, std::string_view name)
{
    const auto value = registry.Query(Hive::CurrentUser, source, name);
    if (!value)
        return std::unexpected{value.error()};
    if (const auto written = registry.Set(Hive::CurrentUser, target, name, *value); !written)
        return written;
    const auto readBack = registry.Query(Hive::CurrentUser, target, name);
    if (!readBack || *readBack != *value)
        return std::unexpected{readBack ? error::GeneralFailure : readBack.error()};
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
    if (text::Length(name) > LongestName || platform::file_name::HasForbiddenCharacter(name) ||
        name.contains(DefaultSuffix) || HasControlCharacter(name))
        return str::InvalidProfileName;
    if (Comparable(name) == Comparable(strings.LoadString(str::BlankProfile)))
        return str::InvalidProfileName;
    if (!ListProfiles())
        return str::None; // the user knows already
    const bool taken = std::ranges::any_of(names, [&](const auto& n) { return text::EqualIgnoringCase(n, name); });
    if (taken || ProfileExists(name))
        return str::ProfileNameTaken;
    return std::nullopt;
}

void ProfileManager::Settle()
{
    if (!ListProfiles() || names.empty())
        return;
    const auto stored = settings.Read(Section, "DefaultProfile");
    bool saved = stored.has_value();
    const auto isStored = [&](const std::string& name) { return Comparable(name) == Comparable(*stored); };
    if (saved && std::ranges::none_of(names, isStored))
        saved = SetDefaultProfile(names.front()).has_value();
    if (saved && !IsProfileEmpty(GetDefaultProfile()))
        saved = settings.Save(Section, "FirstRun", "0").has_value();
    Tell(saved, str::SetValueFailed);
}

Result<std::string> ProfileManager::Read(std::string_view key, std::string_view value) const
{
    const auto stored = registry.Query(Hive::CurrentUser, key, value);
    if (!stored)
        return stored.error() == error::FileNotFound ? Result<std::string>{""} : std::unexpected{stored.error()};
    if (stored->type != ValueType::String && stored->type != ValueType::ExpandString)
        return std::unexpected{ForeignType};
    return stored->data;
}

Result<> ProfileManager::Write(std::string_view key, std::string_view value, const std::string& text)
{
    return registry.Set(Hive::CurrentUser, key, value, {ValueType::String, text});
}

bool ProfileManager::Tell(bool worked, std::uint16_t message)
{
    if (!worked)
        messages.Stop(message);
    return worked;
}

} // namespace profiles
