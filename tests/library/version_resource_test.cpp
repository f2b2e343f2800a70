#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <vector>

namespace {

std::vector<char> ReadVersionResource(const char* file) {
  std::vector<char> resource(GetFileVersionInfoSizeA(file, nullptr));
  if (GetFileVersionInfoA(file, 0, static_cast<DWORD>(resource.size()), resource.data()) == 0) {
    resource.clear();
  }
  return resource;
}

std::string ReadText(const std::vector<char>& resource, const std::string& key) {
  void* text = nullptr;
  UINT size = 0;
  const std::string path = R"(\StringFileInfo\040904B0\)" + key;
  if (VerQueryValueA(resource.data(), path.c_str(), &text, &size) == 0) return "(none)";
  return static_cast<const char*>(text);
}

TEST(VersionResource, StatesTheVersionInNumbersAndTexts) {
  const std::vector<char> resource = ReadVersionResource(VEXOR_LIBRARY);
  ASSERT_FALSE(resource.empty());

  void* block = nullptr;
  UINT size = 0;
  ASSERT_NE(VerQueryValueA(resource.data(), "\\", &block, &size), 0);
  ASSERT_EQ(size, sizeof(VS_FIXEDFILEINFO));
  const auto& numbers = *static_cast<const VS_FIXEDFILEINFO*>(block);
  const auto join = [](DWORD high, DWORD low) {
    return std::to_string(HIWORD(high)) + "." + std::to_string(LOWORD(high)) + "." +
           std::to_string(HIWORD(low)) + "." + std::to_string(LOWORD(low));
  };
  EXPECT_EQ(join(numbers.dwFileVersionMS, numbers.dwFileVersionLS), VEXOR_VERSION);
  EXPECT_EQ(join(numbers.dwProductVersionMS, numbers.dwProductVersionLS), VEXOR_VERSION);
  EXPECT_EQ(ReadText(resource, "FileVersion"), VEXOR_VERSION);
  EXPECT_EQ(ReadText(resource, "ProductVersion"), VEXOR_VERSION);
  EXPECT_EQ(ReadText(resource, "OriginalFilename"), VEXOR_LIBRARY);
}

}  // namespace
