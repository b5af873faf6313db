// Thumbnails: how they are composed, and how a list shows them.
#include "WindowTest.h"

#include "ui/win32/NativeText.h"
#include "ui/win32/ThumbnailPainter.h"
#include "ui/win32/pcMemDC.h"

#include <set>

using ui::win32::pcMemDC;
using ui::win32::PixelBuffer;

namespace {

PixelBuffer Solid(int width, int height, int value)
{
    PixelBuffer picture{width, height};
    for (std::size_t i = 0; i < picture.Size(); ++i)
        picture.Bytes()[i] = static_cast<std::uint8_t>(i % 4 == 3 ? 255 : value);
    return picture;
}

int ValueAt(const PixelBuffer& picture, int x, int y)
{
    return picture.Bytes()[static_cast<std::size_t>(y) * picture.Stride() + static_cast<std::size_t>(x) * 4];
}

class ThumbnailTest : public WindowTest {
protected:
    ThumbnailTest()
    {
        wchar_t temporary[MAX_PATH]{};
        GetTempPathW(MAX_PATH, temporary);
        folder = std::wstring{temporary} + L"Thumbnails \u00E4" + std::to_wstring(GetCurrentProcessId());
        CreateDirectoryW(folder.c_str(), nullptr);
    }
    ~ThumbnailTest() override
    {
        for (const std::wstring& file : files)
            EXPECT_TRUE(DeleteFileW(file.c_str())) << "held open";
        EXPECT_TRUE(RemoveDirectoryW(folder.c_str()));
    }

    std::string Add(const std::wstring& name, const std::string& content)
    {
        const std::wstring path = folder + L"\\" + name;
        HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
        DWORD written = 0;
        WriteFile(file, content.data(), static_cast<DWORD>(content.size()), &written, nullptr);
        CloseHandle(file);
        files.insert(path);
        return ui::win32::FromNative(path);
    }
    std::string AddSolid(const std::wstring& name, int width, int height, char value)
    {
        return Add(name, Bitmap(width, height, width, height, value));
    }

private:
    std::wstring folder;
    std::set<std::wstring> files;
};

/// Rows with a picture each.
class PictureRows final : public ui::ListModel {
public:
    int Rows() const override { return Count; }
    std::string Text(int row, int) const override { return "picture " + std::to_string(row); }
    int Icon(int) const override { return 1; }
    int SmallIcon(int) const override { return 3; }
    ui::Thumbnail ThumbnailOf(int row) const override
    {
        Asked.push_back(row);
        return {Picture, {}, {}};
    }

    int Count{};
    std::string Picture;
    mutable std::vector<int> Asked;
};

} // namespace

TEST_F(ThumbnailTest, AMemoryContextCopiesStretchesAndCombines)
{
    const DWORD objects = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    {
        pcMemDC memory;
        memory.CreateFromPicture(Solid(40, 30, 200));
        EXPECT_EQ(memory.Width(), 40);
        EXPECT_EQ(memory.Height(), 30);
        memory.PaintPicture(Solid(5, 5, 100), {10, 10, 30, 20}, SRCCOPY);
        PixelBuffer result = memory.Picture();
        EXPECT_EQ(ValueAt(result, 9, 9), 200);
        EXPECT_EQ(ValueAt(result, 10, 10), 100);
        EXPECT_EQ(ValueAt(result, 29, 19), 100);
        EXPECT_EQ(ValueAt(result, 30, 20), 200);
        EXPECT_EQ(result.Bytes()[3], 255);
        memory.PaintPicture(Solid(40, 30, 0xF0), {0, 0, 40, 30}, SRCAND);
        EXPECT_EQ(ValueAt(memory.Picture(), 0, 0), 200 & 0xF0);

        const auto bitmap = Solid(8, 6, 77).ToBitmap();
        memory.CreateFromHBitmap(bitmap.get());
        EXPECT_EQ(memory.Width(), 8);
        EXPECT_EQ(ValueAt(memory.Picture(), 7, 5), 77);
        memory.SetWidth(20);
        memory.SetHeight(10);
        EXPECT_EQ(memory.Picture().Width(), 20);
        EXPECT_EQ(ValueAt(memory.Picture(), 0, 0), 0);
        EXPECT_EQ(ValueAt(Solid(8, 6, 77), 7, 5), 77);
        memory.CreateFromPicture({});
        EXPECT_TRUE(memory.Picture().Empty());
        EXPECT_EQ(memory.hdc(), nullptr);
        memory.PaintPicture(Solid(5, 5, 100), {0, 0, 5, 5}, SRCCOPY);
    }
    EXPECT_EQ(GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS), objects);
}

TEST_F(ThumbnailTest, ThePictureLiesOnTheFrameAndWhatIsBrokenGivesWay)
{
    const std::string wide = AddSolid(L"wide.bmp", 400, 100, '\x20');
    const std::string frame = AddSolid(L"frame.bmp", 65, 75, '\x60');
    const std::string spare = AddSolid(L"spare.bmp", 30, 30, '\x50');
    const std::string broken = Add(L"broken.jpg", "no picture");
    struct Case {
        const char* name;
        ui::Thumbnail thumbnail;
        SIZE size;
        int corner, centre; ///< -1: no thumbnail
    };
    for (const Case& c : {Case{"bare", {wide, spare, {}}, {130, 33}, 0x20, 0x20},
                          Case{"framed", {wide, spare, frame}, {130, 150}, 0x60, 0x20},
                          Case{"broken", {broken, spare, {}}, {30, 30}, 0x50, 0x50},
                          Case{"broken, framed", {broken, spare, frame}, {130, 150}, 0x60, 0x50},
                          Case{"no fall-back", {broken, {}, frame}, {0, 0}, -1, -1},
                          Case{"no frame after all", {wide, spare, broken}, {130, 33}, 0x20, 0x20}}) {
        ui::win32::ThumbnailPainter painter{{130, 150}};
        for (int time = 0; time < 2; ++time) { // the frame is kept from the first
            const PixelBuffer thumbnail = painter.Paint(c.thumbnail);
            ASSERT_EQ(thumbnail.Empty(), c.corner < 0) << c.name;
            EXPECT_EQ(thumbnail.Width(), c.size.cx) << c.name;
            EXPECT_EQ(thumbnail.Height(), c.size.cy) << c.name;
            if (thumbnail.Empty())
                continue;
            EXPECT_EQ(ValueAt(thumbnail, 0, 0), c.corner) << c.name;
            EXPECT_EQ(ValueAt(thumbnail, thumbnail.Width() / 2, thumbnail.Height() / 2), c.centre) << c.name;
        }
    }
}

TEST_F(ThumbnailTest, AListShowsThemTheVisibleOnesFirstAndNeverKeepsTheUserWaiting)
{
    DemoForm form{toolkit};
    Open(form);
    HWND list = HandleOf(form.lvList);
    PictureRows rows;
    rows.Picture = AddSolid(L"picture.bmp", 100, 100, '\x21');
    rows.Count = 300;
    form.lvList.SetView(ui::ListView::View::Thumbnails);
    form.lvList.SetModel(&rows);
    form.lvList.Select(150);
    toolkit.DoEvents();
    EXPECT_LT(rows.Asked.size(), 200u) << "handling what waits does not mean composing everything";
    ASSERT_TRUE(PumpUntil([&] { return rows.Asked.size() == 300; }));
    RECT first{};
    first.left = LVIR_ICON;
    SendMessageW(list, LVM_GETITEMRECT, static_cast<WPARAM>(rows.Asked.front()), reinterpret_cast<LPARAM>(&first));
    RECT client{};
    GetClientRect(list, &client);
    EXPECT_TRUE(first.bottom > 0 && first.top < client.bottom) << rows.Asked.front();
    UpdateWindow(list);
    EXPECT_GT(std::ranges::count(Capture(list), 0x212121u), 100 * 100);

    // Another folder drops what was not composed yet.
    form.lvList.Refill();
    toolkit.DoEvents();
    PictureRows few;
    few.Count = 2;
    few.Picture = Add(L"broken.jpg", "no picture");
    form.lvList.SetModel(&few);
    rows.Asked.clear();
    EXPECT_TRUE(PumpUntil([&] { return few.Asked.size() == 2; }));
    EXPECT_THAT(rows.Asked, testing::IsEmpty());
    form.lvList.SetModel(nullptr);
}

TEST_F(ThumbnailTest, OneRowAloneIsMarkedAlsoWhenTheListScrollsForIt)
{
    DemoForm form{toolkit};
    Open(form);
    HWND list = HandleOf(form.lvList);
    form.lvList.SetView(ui::ListView::View::Thumbnails);
    Focus(form.lvList);
    const auto placeOf = [&](int row) {
        RECT place{};
        place.left = LVIR_ICON;
        SendMessageW(list, LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place));
        return place;
    };
    PictureRows rows;
    rows.Count = 60;
    form.lvList.SetModel(&rows);
    Pump();
    RECT client{};
    GetClientRect(list, &client);
    // One line more than there is room for, so that the first one stays partly in view when the last one is shown.
    int line = 1;
    while (placeOf(line).top == placeOf(0).top)
        ++line;
    int count = line;
    while (placeOf(count - 1).bottom + 40 < client.bottom)
        count += line;
    rows.Count = count;
    form.lvList.Refill();
    form.lvList.Select(0);
    Pump();
    const auto marked = [&](int row) {
        UpdateWindow(list);
        const RECT place = placeOf(row); // its lower left corner
        return Capture(list).at(static_cast<std::size_t>((place.bottom - 1) * client.right + place.left)) != 0xFFFFFF;
    };
    ASSERT_TRUE(marked(0));
    Press(VK_END);
    Pump();
    ASSERT_LT(placeOf(0).top, 0);
    ASSERT_GT(placeOf(0).bottom, 0);
    EXPECT_FALSE(marked(0));
    EXPECT_TRUE(marked(count - 1));
    form.lvList.SetModel(nullptr);
}

TEST_F(ThumbnailTest, APictureThatCannotBeShownGivesWayToAnotherAndThenToAText)
{
    DemoForm form{toolkit};
    Open(form);
    HWND image = HandleOf(form.imgPreview);
    const std::string spare = AddSolid(L"spare.bmp", 40, 40, '\x21');
    const auto inked = [&](unsigned colour) {
        UpdateWindow(image);
        return std::ranges::count(Capture(image), colour);
    };
    form.imgPreview.SetFallback(spare, "No picture");
    form.imgPreview.SetFile(Add(L"broken.jpg", "no picture"));
    EXPECT_GT(inked(0x212121), 100);
    form.imgPreview.SetFallback("C:\\no such file.jpg", "No picture");
    EXPECT_EQ(inked(0x212121), 0);
    const auto shades = [&] {
        UpdateWindow(image);
        const auto pixels = Capture(image);
        return std::set<unsigned>(pixels.begin(), pixels.end()).size();
    };
    const auto withText = shades();
    form.imgPreview.SetFallback({}, {});
    EXPECT_GT(withText, shades());
}
