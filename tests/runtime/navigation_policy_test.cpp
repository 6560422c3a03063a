#include "runtime/navigation_policy.h"

#include <gtest/gtest.h>

namespace kelmo {
namespace {

using Verdict = NavigationVerdict;

TEST(NavigationPolicyTest, AnHtmlArtifactMovesWithinItsOriginOnlyAndClickedWebLinksGoOut) {
    NavigationPolicy policy;
    EXPECT_EQ(policy.decide({.uri = "artifact-file://ab/page.html"}), Verdict::allow);
    EXPECT_FALSE(policy.admitsTopFrameResponse("artifact-file://ab/page.html"));

    policy.beginLoad("artifact-file://ab/page.html", false);
    EXPECT_TRUE(policy.admitsTopFrameResponse("artifact-file://ab/page.html"));
    EXPECT_EQ(policy.decide({.uri = "artifact-file://ab/page.html"}), Verdict::allow);
    EXPECT_EQ(policy.decide({.uri = "artifact-file://ab/sub/other.html", .reload = true}),
              Verdict::allow);
    EXPECT_TRUE(policy.admitsTopFrameResponse("artifact-file://ab/sub/other.html"));
    for (const auto* away : {"artifact-file://cd/page.html", "artifact://ab/", "https://x.org/",
                             "data:text/html,hi", "about:blank", "blob:artifact-file://ab/1"})
        EXPECT_FALSE(policy.admitsTopFrameResponse(away)) << away;

    // Frames may load anything; a web link the user clicks opens in the browser, and
    // no page opens a window.
    EXPECT_EQ(policy.decide({.uri = "https://x.org/embed"}), Verdict::allow);
    EXPECT_EQ(policy.decide({.uri = "https://x.org/", .linkClicked = true}), Verdict::allow);
    EXPECT_EQ(policy.decide({.uri = "https://x.org/", .linkClicked = true, .userGesture = true}),
              Verdict::openInBrowser);
    EXPECT_EQ(policy.decide({.uri = "HTTP://x.org/", .newWindow = true, .userGesture = true}),
              Verdict::openInBrowser);
    for (const auto* uri : {"https://x.org/", "file:///etc/passwd", "artifact-file://ab/a.html"})
        EXPECT_EQ(policy.decide({.uri = uri, .newWindow = true}), Verdict::refuse) << uri;
    EXPECT_EQ(policy.decide({.uri = "mailto:a@b.c", .linkClicked = true, .userGesture = true}),
              Verdict::allow);

    policy.clear();
    EXPECT_FALSE(policy.admitsTopFrameResponse("artifact-file://ab/page.html"));
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
