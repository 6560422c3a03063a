#include "app/command_line.h"
#include "app/light_theme.h"
#include "app/renderer_choice.h"
#include "test_support.h"

#include <gtest/gtest.h>

namespace kelmo {
namespace {

TEST(RendererChoice, OnlyMesaSoftwareRasterisersCountAsSoftware) {
    for (const char* software :
         {"llvmpipe (LLVM 15.0.6, 256 bits)", "Mesa SoftPipe", "Software Rasterizer (swrast)"})
        EXPECT_TRUE(isSoftwareRenderer(software)) << software;
    EXPECT_FALSE(isSoftwareRenderer("Mesa Intel(R) UHD Graphics 620 (KBL GT2)"));
    EXPECT_FALSE(isSoftwareRenderer("AMD Radeon RX 6600 (radeonsi, navi23, LLVM 15.0.6)"));
}

TEST(RendererChoice, AGraphicsDeviceIsADriNodeOrNvidiasControlDevice) {
    testing::TemporaryDirectory devices;
    EXPECT_FALSE(hasGraphicsDevice(devices / "missing"));
    EXPECT_FALSE(hasGraphicsDevice(devices.path()));
    std::filesystem::create_directory(devices / "dri");
    EXPECT_FALSE(hasGraphicsDevice(devices.path())) << "an empty dri folder";
    testing::writeFile(devices / "dri" / "renderD128");
    EXPECT_TRUE(hasGraphicsDevice(devices.path()));
    std::filesystem::remove_all(devices / "dri");
    testing::writeFile(devices / "nvidiactl");
    EXPECT_TRUE(hasGraphicsDevice(devices.path()));
}

TEST(LightTheme, DarkVariantsGiveWayToTheirLightThemes) {
    EXPECT_EQ(lightThemeVariant("Adwaita-dark"), "Adwaita");
    EXPECT_EQ(lightThemeVariant("Adwaita:dark"), "Adwaita");
    EXPECT_EQ(lightThemeVariant("Yaru-blue-dark"), "Yaru-blue");
    EXPECT_EQ(lightThemeVariant("HighContrastInverse"), "HighContrast");
    for (const char* light : {"Adwaita", "HighContrast", "Darkroom", "Adwaita:light", ""})
        EXPECT_EQ(lightThemeVariant(light), light);
}

TEST(CommandLine, FilesAreTheArgumentsThatAreNotOptions) {
    EXPECT_EQ(fileArguments({"kelmo", "a.jsx", "--flag", "-x", "b c.html", "-", "--", "-d.tsx"}),
              (std::vector<std::string>{"a.jsx", "b c.html", "-", "-d.tsx"}));
    EXPECT_TRUE(fileArguments({"kelmo"}).empty());
}

TEST(CommandLine, MissingFilesAreSeparatedAndDroppedFromTheCommandLine) {
    testing::TemporaryDirectory dir;
    const std::string present = dir / "here.jsx";
    const std::string absent = dir / "gone.jsx";
    testing::writeFile(present);

    const auto checked = checkFileArguments({present, absent, ""});
    EXPECT_EQ(checked.existing, std::vector<std::string>{present});
    EXPECT_EQ(checked.missing, (std::vector<std::string>{absent, ""}));

    EXPECT_EQ(withoutMissingFiles({"kelmo", "--flag", absent, present}, {absent}),
              (std::vector<std::string>{"kelmo", "--flag", present}));
}

} // namespace
} // namespace kelmo
