#include "WindowTest.h"

#include "ui/win32/ImageLoader.h"
#include "ui/win32/NativeText.h"
#include "ui/win32/PictureLoader.h"

using ui::win32::ImageLoader;
using ui::win32::PictureLoader;
using ui::win32::PixelBuffer;

namespace {

class PictureTest : public testing::Test {
protected:
    PictureTest()
    {
        wchar_t folder[MAX_PATH]{};
        GetTempPathW(MAX_PATH, folder);
        wchar_t file[MAX_PATH]{};
        GetTempFileNameW(folder, L"pic", 0, file);
        path = file;
    }
    ~PictureTest() override { EXPECT_TRUE(DeleteFileW(path.c_str())) << "a picture's file was held open"; }

    std::string Write(const std::string& content)
    {
        HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
        DWORD written = 0;
        WriteFile(file, content.data(), static_cast<DWORD>(content.size()), &written, nullptr);
        CloseHandle(file);
        return ui::win32::FromNative(path);
    }

    ui::win32::Win32Toolkit toolkit;
    std::wstring path;
};

} // namespace

TEST_F(PictureTest, FitsIntoItsRoomWithItsProportions)
{
    struct Case {
        int width, height;
        SIZE room;
        int shownWidth, shownHeight;
    };
    for (const Case& c : {Case{200, 100, {100, 100}, 100, 50}, Case{100, 200, {100, 100}, 50, 100},
                          Case{40, 30, {100, 100}, 40, 30}, Case{300, 2, {30, 30}, 30, 1}}) {
        const PixelBuffer shown = PictureLoader::Load(Write(Bitmap(c.width, c.height, c.width, c.height)), c.room);
        EXPECT_EQ(shown.Width(), c.shownWidth) << c.width << "x" << c.height;
        EXPECT_EQ(shown.Height(), c.shownHeight) << c.width << "x" << c.height;
    }
}

TEST_F(PictureTest, ABrokenOrHostileFileShowsNothing)
{
    const std::string whole = Bitmap(20, 20, 20, 20);
    for (const std::string& content :
         {std::string{}, std::string{"no picture"}, whole.substr(0, 40), Bitmap(2, 2, 0x7FFFFFFF, 0x7FFFFFFF),
          Bitmap(2, 2, 30000, 2), Bitmap(2, 2, 19000, 19000), Bitmap(2, 2, 0, 0)}) {
        const std::string file = Write(content);
        EXPECT_TRUE(PictureLoader::Load(file, {50, 50}).Empty()) << content.size();
        EXPECT_FALSE(toolkit.CanShowPicture(file)) << content.size();
        EXPECT_EQ(ImageLoader{GetModuleHandleW(nullptr)}.FromFile(file, 16), nullptr);
    }
    EXPECT_TRUE(PictureLoader::Load("C:\\no such folder\\none.png", {50, 50}).Empty());
    EXPECT_TRUE(PictureLoader::Load(Write(whole), {0, 50}).Empty());
    EXPECT_TRUE(toolkit.CanShowPicture(Write(whole)));
}

TEST_F(PictureTest, ScalingKeepsTheMeanAndTheEdges)
{
    PixelBuffer stripes{8, 2};
    for (int i = 0; i < 16; ++i)
        for (int channel = 0; channel < 4; ++channel)
            stripes.Bytes()[i * 4 + channel] = channel == 3 ? 255 : i % 8 < 4 ? 200 : 0;
    PixelBuffer half = stripes.ScaledTo(4, 1);
    EXPECT_EQ(half.Bytes()[0], 200);
    EXPECT_EQ(half.Bytes()[3 * 4], 0);
    PixelBuffer one = stripes.ScaledTo(1, 1);
    EXPECT_EQ(one.Bytes()[0], 100);
    EXPECT_EQ(one.Bytes()[3], 255);
}

TEST_F(PictureTest, AnImageListFillsGapsAndReplacesWhatIsBroken)
{
    const ImageLoader loader{GetModuleHandleW(nullptr)};
    ui::ImageList pictures;
    pictures.SetNamed(1, "folder");
    pictures.SetNamed(4, "no such picture");
    pictures.AddFile(Write("no icon"));
    const auto list = loader.Build(pictures, 36);
    EXPECT_EQ(ImageList_GetImageCount(list.get()), 6);
    int width = 0;
    int height = 0;
    ImageList_GetIconSize(list.get(), &width, &height);
    EXPECT_EQ(width, 36);
    EXPECT_EQ(loader.Named("no such picture", 16), nullptr);
    EXPECT_NE(loader.Load({"no such picture", {}}, 16), nullptr);
}
