#include "app/about_window.h"
#include "app/contact_link.h"
#include "shell_fixture.h"

#include <gmock/gmock.h>
#include <gtkmm/box.h>

namespace kelmo::testing {
namespace {

using ::testing::IsSupersetOf;
using AboutViewTest = ShellTest;

TEST_F(AboutViewTest, ShowsTheProductAndTheMakerWithContactLinksInAWindowOfFixedSize) {
    AboutWindow about;
    about.present();
    ASSERT_TRUE(runMainLoopUntil([&] { return about.get_mapped(); }));
    EXPECT_FALSE(about.get_resizable());
    EXPECT_THAT(shownTexts(about),
                IsSupersetOf({"Kelmo", "Version " KELMO_VERSION "  ·  Linux", KELMO_MAKER_NAME}));

    std::vector<std::string> links;
    for (auto* link : findAll<ContactLink>(about))
        links.push_back(link->url());
    EXPECT_EQ(links, (std::vector<std::string>{"mailto:" KELMO_MAKER_EMAIL,
                                               "https://" KELMO_MAKER_DOMAIN}));
}

TEST_F(AboutViewTest, ContactLinksOpenValidAddressesOnly) {
    std::vector<std::string> opened;
    const auto record = [&opened](const std::string& uri) { opened.push_back(uri); };
    auto* box = Gtk::make_managed<Gtk::Box>();
    for (const auto& url : {mailtoURL("ada@lab.example"), websiteURL("lab.example"),
                            websiteURL("%zz.example"), std::string{"no scheme"}, std::string{}})
        box->append(*Gtk::make_managed<ContactLink>("globe", url, url, record));
    show(*box);
    for (auto* link : findAll<ContactLink>(*box))
        click(*link);
    EXPECT_EQ(opened, (std::vector<std::string>{"mailto:ada@lab.example", "https://lab.example"}));
}

} // namespace
} // namespace kelmo::testing
