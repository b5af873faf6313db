#include "ui/win32/FileOffer.h"

#include "platform/Path.h"
#include "ui/win32/NativeText.h"

#include <array>
#include <cstddef>
#include <cstring>
#include <new>

namespace ui::win32 {
namespace {

CLIPFORMAT PreferredEffect()
{
    static const UINT format = RegisterClipboardFormatW(L"Preferred DropEffect");
    return static_cast<CLIPFORMAT>(format);
}

/// Null when memory is short.
HGLOBAL Moveable(const void* bytes, std::size_t size)
{
    HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, size);
    if (memory == nullptr)
        return nullptr;
    std::memcpy(GlobalLock(memory), bytes, size);
    GlobalUnlock(memory);
    return memory;
}

HGLOBAL AsFiles(const std::string& path)
{
    DROPFILES header{};
    header.pFiles = sizeof(header);
    header.fWide = TRUE;
    std::wstring list = ToNative(path);
    list.append(2, L'\0'); // the end of the path, and of the list
    std::string bytes(reinterpret_cast<const char*>(&header), sizeof(header));
    bytes.append(reinterpret_cast<const char*>(list.data()), list.size() * sizeof(wchar_t));
    return Moveable(bytes.data(), bytes.size());
}

HGLOBAL AsText(std::string_view text)
{
    const std::wstring native = ToNative(text);
    return Moveable(native.c_str(), (native.size() + 1) * sizeof(wchar_t));
}

HGLOBAL AsName(const std::string& path)
{
    return AsText(platform::path::Name(path));
}

HGLOBAL AsEffect(const std::string&)
{
    const DWORD effect = DROPEFFECT_COPY;
    return Moveable(&effect, sizeof(effect));
}

struct Offered {
    CLIPFORMAT format;
    HGLOBAL (*make)(const std::string& path);
};

std::array<Offered, 3> Offers()
{
    return {{{CF_HDROP, &AsFiles}, {CF_UNICODETEXT, &AsName}, {PreferredEffect(), &AsEffect}}};
}

FORMATETC Describe(CLIPFORMAT format)
{
    return {format, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
}

/// What QueryInterface answers for an object with one interface.
template <class Interface>
HRESULT Query(Interface& object, REFIID wanted, void** found)
{
    if (found == nullptr)
        return E_POINTER;
    const bool isKnown = wanted == IID_IUnknown || wanted == __uuidof(Interface);
    *found = isKnown ? &object : nullptr;
    if (!isKnown)
        return E_NOINTERFACE;
    object.AddRef();
    return S_OK;
}

/// Gives back one use of an object, which ends with the last of them.
template <class Object>
ULONG GiveBack(Object* object, LONG& uses)
{
    const LONG left = InterlockedDecrement(&uses);
    if (left == 0)
        delete object;
    return static_cast<ULONG>(left);
}

class FileData final : public IDataObject {
public:
    explicit FileData(std::string file) : path{std::move(file)} {}
    virtual ~FileData() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** object) override
    {
        return Query<IDataObject>(*this, wanted, object);
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(InterlockedIncrement(&uses)); }
    ULONG STDMETHODCALLTYPE Release() override { return GiveBack(this, uses); }

    HRESULT STDMETHODCALLTYPE GetData(FORMATETC* wanted, STGMEDIUM* medium) override
    {
        const Offered* offered = Find(wanted);
        if (offered == nullptr || medium == nullptr)
            return DV_E_FORMATETC;
        *medium = {};
        medium->tymed = TYMED_HGLOBAL;
        try {
            medium->hGlobal = offered->make(path);
        } catch (const std::bad_alloc&) {
            medium->hGlobal = nullptr;
        }
        return medium->hGlobal != nullptr ? S_OK : STG_E_MEDIUMFULL;
    }
    HRESULT STDMETHODCALLTYPE QueryGetData(FORMATETC* wanted) override
    {
        return Find(wanted) != nullptr ? S_OK : DV_E_FORMATETC;
    }
    HRESULT STDMETHODCALLTYPE EnumFormatEtc(DWORD direction, IEnumFORMATETC** enumerator) override
    {
        if (direction != DATADIR_GET)
            return E_NOTIMPL;
        std::array<FORMATETC, std::tuple_size_v<decltype(offers)>> formats;
        for (std::size_t i = 0; i < formats.size(); ++i)
            formats[i] = Describe(offers[i].format);
        return SHCreateStdEnumFmtEtc(static_cast<UINT>(formats.size()), formats.data(), enumerator);
    }
    HRESULT STDMETHODCALLTYPE GetDataHere(FORMATETC*, STGMEDIUM*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetCanonicalFormatEtc(FORMATETC*, FORMATETC* same) override
    {
        if (same != nullptr)
            same->ptd = nullptr;
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE SetData(FORMATETC*, STGMEDIUM*, BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DAdvise(FORMATETC*, DWORD, IAdviseSink*, DWORD*) override
    {
        return OLE_E_ADVISENOTSUPPORTED;
    }
    HRESULT STDMETHODCALLTYPE DUnadvise(DWORD) override { return OLE_E_ADVISENOTSUPPORTED; }
    HRESULT STDMETHODCALLTYPE EnumDAdvise(IEnumSTATDATA**) override { return OLE_E_ADVISENOTSUPPORTED; }

private:
    LONG uses{1};
    std::string path;
    std::array<Offered, 3> offers{Offers()};

    const Offered* Find(const FORMATETC* wanted) const
    {
        if (wanted == nullptr || (wanted->tymed & TYMED_HGLOBAL) == 0 || wanted->dwAspect != DVASPECT_CONTENT)
            return nullptr;
        for (const Offered& offered : offers)
            if (offered.format == wanted->cfFormat)
                return &offered;
        return nullptr;
    }
};

class FileSource final : public IDropSource {
public:
    virtual ~FileSource() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** object) override
    {
        return Query<IDropSource>(*this, wanted, object);
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(InterlockedIncrement(&uses)); }
    ULONG STDMETHODCALLTYPE Release() override { return GiveBack(this, uses); }
    HRESULT STDMETHODCALLTYPE QueryContinueDrag(BOOL escape, DWORD keys) override
    {
        if (escape || (keys & MK_RBUTTON) != 0)
            return DRAGDROP_S_CANCEL;
        return (keys & MK_LBUTTON) == 0 ? DRAGDROP_S_DROP : S_OK;
    }
    HRESULT STDMETHODCALLTYPE GiveFeedback(DWORD) override { return DRAGDROP_S_USEDEFAULTCURSORS; }

private:
    LONG uses{1};
};

/// The clipboard belongs to whoever opened it; another program may for a moment.
bool OpenPatiently(HWND owner)
{
    constexpr int tries = 5;
    constexpr DWORD pause = 10; // milliseconds
    for (int i = 0; i < tries; ++i) {
        if (OpenClipboard(owner))
            return true;
        Sleep(pause);
    }
    return false;
}

std::string FirstOf(HDROP files)
{
    std::wstring path(DragQueryFileW(files, 0, nullptr, 0), L'\0');
    DragQueryFileW(files, 0, path.data(), static_cast<UINT>(path.size()) + 1);
    return FromNative(path);
}

/// What becomes the clipboard's is its own; the rest is freed. False without a memory.
bool Give(UINT format, HGLOBAL memory)
{
    const bool isTaken = memory != nullptr && SetClipboardData(format, memory) != nullptr;
    if (!isTaken && memory != nullptr)
        GlobalFree(memory);
    return isTaken;
}

} // namespace

bool CopyTextToClipboard(HWND owner, const std::string& text)
{
    if (!OpenPatiently(owner))
        return false;
    const bool isThere = EmptyClipboard() != FALSE && Give(CF_UNICODETEXT, AsText(text));
    CloseClipboard();
    return isThere;
}

bool CopyFileToClipboard(HWND owner, const std::string& path)
{
    if (!OpenPatiently(owner))
        return false;
    bool isThere = EmptyClipboard() != FALSE;
    for (const Offered& offered : Offers())
        isThere = Give(offered.format, offered.make(path)) && isThere;
    CloseClipboard();
    return isThere;
}

pictures::win32::ComPointer<IDataObject> OfferOf(const std::string& path)
{
    return pictures::win32::ComPointer<IDataObject>{new FileData{path}};
}

void DragFile(const std::string& path)
{
    // What the system needs for dragging, beside what the thread has already.
    if (FAILED(OleInitialize(nullptr)))
        return;
    {
        const auto data = OfferOf(path);
        const pictures::win32::ComPointer<IDropSource> source{new FileSource};
        DWORD effect = DROPEFFECT_NONE;
        DoDragDrop(data.get(), source.get(), DROPEFFECT_COPY, &effect);
    }
    OleUninitialize();
}

std::string FileOnClipboard(HWND owner)
{
    if (!IsClipboardFormatAvailable(CF_HDROP) || !OpenPatiently(owner))
        return {};
    HANDLE files = GetClipboardData(CF_HDROP);
    std::string first = files != nullptr ? FirstOf(static_cast<HDROP>(files)) : std::string{};
    CloseClipboard();
    return first;
}

std::string TakeDroppedFile(HDROP files)
{
    std::string first = FirstOf(files);
    DragFinish(files);
    return first;
}

} // namespace ui::win32
