#include "runtime/navigation_policy.h"

#include <gtest/gtest.h>

namespace kelmo {
namespace {

using Verdict = NavigationVerdict;

// Through the web view: IsolationTest.TheArtifactCannotLeaveItsOrigin...; here the
// cases a page cannot easily make.
TEST(NavigationPolicyTest, AnHtmlArtifactStaysInItsOriginAndOnlyAClickedWebLinkGoesOut) {
    NavigationPolicy policy;
    EXPECT_FALSE(policy.admitsTopFrameResponse("artifact-file://ab/page.html")) << "no load";
    policy.beginLoad("artifact-file://ab/page.html", false);
    EXPECT_TRUE(policy.admitsTopFrameResponse("artifact-file://ab/sub/other.html"));
    EXPECT_TRUE(policy.admitsTopFrameResponse("artifact-file://ab/caf%E9.html"))
        << "a Latin-1 file name";
    for (const auto* away : {"artifact-file://cd/page.html", "artifact://ab/", "about:blank",
                             "blob:artifact-file://ab/1"})
        EXPECT_FALSE(policy.admitsTopFrameResponse(away)) << away;
    EXPECT_EQ(policy.decide({.uri = "https://x.org/", .linkClicked = true}), Verdict::allow);
    EXPECT_EQ(policy.decide({.uri = "HTTP://x.org/", .newWindow = true, .userGesture = true}),
              Verdict::openInBrowser);
    EXPECT_EQ(policy.decide({.uri = "file:///etc/passwd", .newWindow = true, .userGesture = true}),
              Verdict::refuse);
    EXPECT_EQ(policy.decide({.uri = "mailto:a@b.c", .linkClicked = true, .userGesture = true}),
              Verdict::allow);
}

TEST(NavigationPolicyTest, ThePlayerStaysOnItsPageAndRunsAgainWhenItAsksForItself) {
    NavigationPolicy policy;
    policy.beginLoad("artifact://ab/", true);
    EXPECT_EQ(policy.decide({.uri = "artifact://ab/"}), Verdict::allow); // the load itself
    EXPECT_EQ(policy.decide({.uri = "artifact://ab/#section"}), Verdict::allow);
    EXPECT_EQ(policy.decide({.uri = "artifact://ab/"}), Verdict::runAgain);
    EXPECT_EQ(policy.decide({.uri = "artifact://ab/#section", .reload = true}), Verdict::runAgain);
    EXPECT_EQ(policy.decide({.uri = "artifact://ab/about"}), Verdict::refuse);
    EXPECT_EQ(NavigationPolicy::originOf("artifact://ab:8/x?y#z"), "artifact://ab:8/");
    EXPECT_EQ(NavigationPolicy::originOf("data:text/html,x"), "");
}

} // namespace
} // namespace kelmo
