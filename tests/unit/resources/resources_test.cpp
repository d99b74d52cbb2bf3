// The resources as Windows hands them out: pictures, version record, type library.
#include <doctest.h>
// ole2 after windows.h
#include <windows.h>

#include <ole2.h>

#include <new>
#include <string>
#include <vector>

#include "platform/Module.h"
#include "platform/com/Com.h"
#include "platform/com/Picture.h"
#include "testing/HandleCount.h"
#include "testing/ImportPatch.h"
#include "testing/RealFunction.h"

namespace {

constexpr COLORREF lightGrey = RGB(192, 192, 192);
constexpr int size = 16;

// A bitmap selected into a memory device, to be read point by point.
class Points {
  public:
    explicit Points(platform::BitmapHandle bitmap)
        : bitmap_(static_cast<HBITMAP>(bitmap.handle)), device_(CreateCompatibleDC(nullptr)) {
        REQUIRE(bitmap_ != nullptr);
        REQUIRE(GetObjectA(bitmap_, sizeof header_, &header_) != 0);
        former_ = SelectObject(device_, bitmap_);
    }
    ~Points() {
        SelectObject(device_, former_);
        DeleteDC(device_);
        DeleteObject(bitmap_);
    }
    Points(const Points&) = delete;
    Points& operator=(const Points&) = delete;

    [[nodiscard]] const BITMAP& Header() const { return header_; }
    [[nodiscard]] COLORREF At(int x, int y) const { return GetPixel(device_, x, y); }
    [[nodiscard]] std::vector<COLORREF> All() const {
        std::vector<COLORREF> all;
        for (int y = 0; y < size; ++y) {
            for (int x = 0; x < size; ++x) all.push_back(At(x, y));
        }
        return all;
    }

  private:
    HBITMAP bitmap_;
    HDC device_;
    HGDIOBJ former_ = nullptr;
    BITMAP header_{};
};

std::string VersionText(const char* name) {
    const std::string path = platform::ModulePath();
    DWORD ignored = 0;
    std::vector<char> record(GetFileVersionInfoSizeA(path.c_str(), &ignored));
    REQUIRE(GetFileVersionInfoA(path.c_str(), 0, static_cast<DWORD>(record.size()), record.data()));
    void* text = nullptr;
    UINT length = 0;
    if (!VerQueryValueA(record.data(), (std::string("\\StringFileInfo\\040904E4\\") + name).c_str(), &text, &length)) {
        return "(none)";
    }
    return static_cast<const char*>(text);
}

}  // namespace

TEST_CASE("every button has a face of 16 by 16 points on light grey") {
    for (int number = 101; number <= 107; ++number) {
        CAPTURE(number);
        const Points face(platform::LoadBitmapResource(number));
        CHECK(face.Header().bmWidth == size);
        CHECK(face.Header().bmHeight == size);
        CHECK(face.At(0, size - 1) == lightGrey);
    }
}

TEST_CASE("light grey is replaced by another colour and nothing else changes") {
    for (int number = 101; number <= 107; ++number) {
        CAPTURE(number);
        const COLORREF ground = RGB(1, 2, 3);
        const auto plain = Points(platform::LoadBitmapResource(number)).All();
        const auto mapped = Points(platform::LoadMappedBitmap(number, {platform::LightGrey, ground})).All();
        for (std::size_t at = 0; at < plain.size(); ++at) {
            CHECK(mapped[at] == (plain[at] == lightGrey ? ground : plain[at]));
        }
    }
}

TEST_CASE("a mask is black where its face shows and white where it is light grey") {
    for (int number = 102; number <= 107; ++number) {
        CAPTURE(number);
        const auto face = Points(platform::LoadBitmapResource(number)).All();
        const Points mask(platform::LoadBitmapResource(number + 100));
        CHECK(mask.Header().bmBitsPixel == 1);
        const auto points = mask.All();
        REQUIRE(points.size() == face.size());
        for (std::size_t at = 0; at < face.size(); ++at) {
            CHECK(points[at] == (face[at] == lightGrey ? RGB(255, 255, 255) : RGB(0, 0, 0)));
        }
    }
}

// No memory for the 16 times 16 points of a picture.
void* __cdecl NoMemoryForPoints(std::size_t bytes) {
    if (bytes == size * size * 4) return nullptr;
    return Real<void*(__cdecl*)(std::size_t)>("msvcrt.dll", "malloc")(bytes);
}

TEST_CASE("where there is no memory for its points a picture is let go of") {
    static_cast<void>(platform::ReadBitmapResource(101));
    const std::uint32_t before = handles::GdiObjects();
    {
        ImportPatch patch;
        const ImportPatch::Import memory[] = {{"msvcrt.dll", "malloc", reinterpret_cast<void*>(&NoMemoryForPoints)}};
        REQUIRE(patch.Replace(GetModuleHandleA(nullptr), memory) == 1);
        bool ended = false;
        try {
            static_cast<void>(platform::ReadBitmapResource(101));
        } catch (const std::bad_alloc&) {
            ended = true;
        }
        CHECK(ended);
    }
    CHECK(handles::GdiObjects() == before);
}

TEST_CASE("the face of the versions that know no masks has none") { CHECK_FALSE(platform::LoadBitmapResource(201)); }

TEST_CASE("the version record names the product, the library and their version") {
    CHECK(VersionText("ProductName") == "Corvella AddIn");
    CHECK(VersionText("InternalName") == "CVOutlookAddIn");
    CHECK(VersionText("FileVersion") == CV_VERSION);
    CHECK(VersionText("ProductVersion") == CV_VERSION);
    CHECK(VersionText("Comments") == "(none)");
}

TEST_CASE("the type library describes the add-in class by its connection interface") {
    platform::ComPtr<ITypeLib> library;
    const std::wstring path = platform::Widen(platform::ModulePath());
    REQUIRE(LoadTypeLibEx(path.c_str(), REGKIND_NONE, library.Put()) == S_OK);
    platform::ComPtr<ITypeInfo> connect;
    MEMBERID member = 0;
    USHORT found = 1;
    std::wstring name = L"Connect";
    REQUIRE(library->FindName(name.data(), 0, connect.Put(), &member, &found) == S_OK);
    REQUIRE(found == 1);
    TYPEATTR* attributes = nullptr;
    REQUIRE(connect->GetTypeAttr(&attributes) == S_OK);
    CHECK(attributes->typekind == TKIND_COCLASS);
    connect->ReleaseTypeAttr(attributes);
    HREFTYPE reference = 0;
    platform::ComPtr<ITypeInfo> extensibility;
    REQUIRE(connect->GetRefTypeOfImplType(0, &reference) == S_OK);
    REQUIRE(connect->GetRefTypeInfo(reference, extensibility.Put()) == S_OK);
    platform::Bstr interfaceName;
    REQUIRE(extensibility->GetDocumentation(MEMBERID_NIL, interfaceName.Put(), nullptr, nullptr, nullptr) == S_OK);
    CHECK(interfaceName.Text() == "IDTExtensibility2");
}
