#include "packs/TemplatePackManager.h"

#include "packs/PackRemoval.h"
#include "packs/StringId.h"
#include "platform/Path.h"
#include "platform/Text.h"

#include <algorithm>

namespace packs {
namespace {

using platform::Result;

constexpr std::size_t MostNamed = 12; ///< a longer list makes a box that no screen holds

/// A text "1". What an installer stored as another type counts unless it is a plain zero: a pack of the setup is what
/// must not be deleted by mistake.
bool IsYes(const platform::RegistryValue& value)
{
    switch (value.type) {
    case platform::ValueType::String:
    case platform::ValueType::ExpandString:
        return platform::text::Trimmed(value.data) == "1";
    case platform::ValueType::Dword:
        return std::ranges::any_of(value.data, [](char byte) { return byte != 0; });
    default:
        return true;
    }
}

void AddParagraph(std::string& text, const std::string& paragraph)
{
    text.append(text.empty() || paragraph.empty() ? "" : "\r\n\r\n").append(paragraph);
}

} // namespace

Result<std::vector<std::string>> TemplatePackManager::Names() const
{
    const auto key = app::RegistryAccess::SplitPath(strings.LoadString(str::ContentKey));
    if (!key)
        return std::vector<std::string>{};
    auto names = registry.SubKeys(key->first, key->second);
    if (!names && names.error() == platform::error::FileNotFound)
        return std::vector<std::string>{};
    return names;
}

Result<SolutionPack> TemplatePackManager::Read(const std::string& name) const
{
    const std::string section = platform::path::Join("Content", name);
    SolutionPack pack{.name = name};
    std::string folders;
    for (const auto& [key, value] :
         {std::pair{"Version", &pack.version}, {"Description", &pack.description}, {"TemplateFolders", &folders}}) {
        auto stored = settings.Read(section, key);
        if (!stored)
            return std::unexpected{stored.error()};
        *value = std::move(*stored);
    }
    const auto setUp = registry.Query(platform::Hive::CurrentUser, settings.KeyOf(section), "PackInstalledBySetUp");
    if (!setUp && setUp.error() != platform::error::FileNotFound)
        return std::unexpected{setUp.error()};
    pack.isOfSetup = setUp && IsYes(*setUp);
    pack.folders = ParsePackFolders(folders);
    return pack;
}

std::vector<SolutionPack> TemplatePackManager::GetTemplatePacks()
{
    const auto names = Names();
    if (!names)
        messages.Plain(str::EnumerationFailed);
    std::vector<SolutionPack> packs;
    for (const std::string& name : names.value_or(std::vector<std::string>{})) {
        packs.push_back(Read(name).value_or(SolutionPack{.name = name}));
        toolkit.DoEvents();
    }
    return packs;
}

void TemplatePackManager::Delete(const std::vector<std::string>& names, const std::function<void()>& releaseLibrary,
                                 const std::function<void()>& libraryChanged)
{
    // The registry is asked anew: a list that is shown may be old. Nothing is touched before all of it is known, since
    // a folder goes only when no other pack names it.
    const auto installed = Names();
    if (!installed) {
        messages.Stop(str::DeleteValueFailed);
        return;
    }
    std::vector<SolutionPack> removed, others;
    std::vector<std::string> doomed;
    for (const std::string& name : *installed) {
        auto pack = Read(name);
        if (!pack) {
            messages.Stop(str::DeleteValueFailed);
            return;
        }
        const bool isDeleted = std::ranges::find(names, name) != names.end();
        if (isDeleted)
            doomed.push_back(name);
        (isDeleted && !pack->isOfSetup ? removed : others).push_back(std::move(*pack));
    }

    PackRemoval removal{files, state.TemplatesPath, removed, others};
    if (std::ranges::any_of(removed, [](const SolutionPack& pack) { return !pack.folders.empty(); })) {
        releaseLibrary();
        {
            const app::PatientFiles::Operation whole{files};
            removal.Run();
            if (whole.IsGivenUp()) // the keys stay, by which it can be done again
                return;
        }
        libraryChanged();
    }

    std::string failure = DeleteKeys(doomed) ? "" : strings.LoadString(str::DeleteValueFailed);
    AddParagraph(failure, Named(str::NotRemoved, removal.NotRemoved()));
    const std::string kept = Named(str::LeftInPlace, removal.Kept());
    if (!failure.empty()) {
        AddParagraph(failure, kept);
        messages.Stop(failure);
    } else if (!kept.empty()) {
        messages.Inform(kept);
    }
}

Result<> TemplatePackManager::DeleteKeys(const std::vector<std::string>& names)
{
    Result<> outcome;
    const auto key = app::RegistryAccess::SplitPath(strings.LoadString(str::ContentKey));
    for (const std::string& name : names) {
        const auto deleted = registry.DeleteKey(key->first, platform::path::Join(key->second, name));
        if (!deleted && deleted.error() != platform::error::FileNotFound) // gone by itself
            outcome = deleted;
    }
    return outcome;
}

std::string TemplatePackManager::Named(std::uint16_t text, const std::vector<std::string>& paths) const
{
    if (paths.empty())
        return {};
    std::string named = strings.LoadString(text) + "\r\n";
    for (std::size_t i = 0; i < std::min(paths.size(), MostNamed); ++i)
        named += "\r\n" + paths[i];
    if (paths.size() > MostNamed)
        named += "\r\n" + strings.LoadString(str::AndMore);
    return named;
}

} // namespace packs
