#include "runtime/artifact_compiler.h"
#include "test_support.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kelmo {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;
using testing::TemporaryDirectory;
using testing::writeFile;

const ArtifactCompiler esbuild{std::filesystem::path{KELMO_ESBUILD}};

CompiledModule compiled(std::string_view source) {
    auto outcome = esbuild.compileNow(source);
    if (auto* module = std::get_if<CompiledModule>(&outcome))
        return std::move(*module);
    ADD_FAILURE() << "did not compile: " << source;
    return {};
}

TEST(ArtifactCompilerTest, TypeScriptIsStrippedAndTheModuleShapeFollowsTheSource) {
    const auto module = compiled(R"(
        import React, { useState } from "react";
        import type { FC } from "react";
        import { type Row, Camera } from "lucide-react";
        import * as d3 from "d3";
        import "./styles.css";
        enum Status { Todo = "todo", Done = "done" }
        interface Props { title: string }
        const palette = { ink: "#111" } satisfies Record<string, string>;
        function first<T>(items: T[]): T { return items[0]; }
        const snippet = `const fs = require("fs");`;
        export const Zebra: FC<Props> = ({ title }) => <h2>{title}{Status.Done}</h2>;
        export function Apple() { return <Camera />; }
        export default function Board() {
          const [rows] = useState<Row[]>([]);
          return <div style={{ color: palette.ink }}>{first([d3.max([1, 2])])}{rows?.length}</div>;
        }
        export { first as pick };
        export * from "@/lib/utils";
    )");
    EXPECT_THAT(module.code, AllOf(Not(HasSubstr("interface")), Not(HasSubstr("satisfies")),
                                   Not(HasSubstr("<T>")), Not(HasSubstr("<h2>")),
                                   HasSubstr("?.") /* nothing modern is lowered */));
    // Type-only imports are gone; text that looks like a call is not an import.
    EXPECT_THAT(module.imports,
                ::testing::UnorderedElementsAre("react/jsx-runtime", "react", "lucide-react", "d3",
                                                "./styles.css", "@/lib/utils"));
    // In the order of their declarations, not the compiler's alphabetical table.
    EXPECT_THAT(module.exports, ElementsAre("pick", "Zebra", "Apple", "default"));
}

TEST(ArtifactCompilerTest, TheIconsAModuleNamesAreKnownUnlessItUsesThePackageWhole) {
    EXPECT_EQ(compiled(R"(
        import { Star, Heart as Love, HeartIcon } from "lucide-react";
        const import_lucide_reactor = 1;
        export default () => <p>{import_lucide_reactor}<Love /><Star /><Love /></p>;
    )")
                  .icons,
              std::vector<std::string>({"Heart", "Star"}));
    EXPECT_EQ(compiled("import 'lucide-react'; export default () => <p />;").icons,
              std::vector<std::string>{});
    for (const char* whole : {
             "import * as Icons from 'lucide-react'; export default () => <Icons.Star />;",
             "import Lucide, { Star } from 'lucide-react'; export default () => <><Star "
             "/><Lucide.Sun /></>;",
             "import { icons } from 'lucide-react'; export default () => <icons.Star />;",
             "import { Star } from 'lucide-react'; export { Sun } from 'lucide-react'; "
             "export default () => <Star />;",
             "export * from 'lucide-react';",
             "export default () => <p />;",
         })
        EXPECT_EQ(compiled(whole).icons, std::nullopt) << whole;
}

TEST(ArtifactCompilerTest, ASyntaxErrorNamesItsLineAndItsColumnInCharacters) {
    const std::string source = "const greeting = \"héllo wörld\";\n"
                               "export default function App() {\n"
                               "  return <p title=\"ünïcode\">{greeting</p>;\n"
                               "}\n";
    const auto outcome = esbuild.compileNow(source);
    const auto* failure = std::get_if<CompileFailure>(&outcome);
    ASSERT_NE(failure, nullptr);
    EXPECT_THAT(failure->message, AllOf(Not(::testing::IsEmpty()), Not(HasSubstr("[ERROR]"))));
    EXPECT_EQ(failure->line, 3);
    // esbuild counts the bytes of "ü" and "ï" twice; the page counts characters.
    const auto byteColumn = std::string_view{"  return <p title=\"ünïcode\">{greeting</p>;"}.size();
    EXPECT_EQ(failure->column, static_cast<int>(byteColumn) - 2 + 1);

    EXPECT_EQ(pageJsonOf(CompileFailure{"Unexpected \"<\"", 3, 7}),
              R"({"error":{"message":"Unexpected \"\u003c\"","line":3,"column":7}})");
    EXPECT_EQ(failureOf("some other output", source), std::nullopt);
}

TEST(ArtifactCompilerTest, ACompilerThatIsMissingOrFailsWithoutAnErrorIsUnavailable) {
    TemporaryDirectory folder;
    EXPECT_FALSE(ArtifactCompiler{std::nullopt}.isAvailable());
    const auto crashing = folder / "crashing";
    writeFile(crashing, "#!/bin/sh\nkill -SEGV $$\n");
    std::filesystem::permissions(crashing, std::filesystem::perms::owner_all);
    // One that is gone before it has read a large source breaks no pipe of ours.
    const std::string large(4 << 20, 'x');
    const std::pair<std::optional<std::filesystem::path>, std::string> cases[] = {
        {std::nullopt, "x"}, {folder / "esbuild", "x"}, {crashing, "x"},
        {"/bin/false", "x"}, {crashing, large},
    };
    for (const auto& [path, source] : cases)
        EXPECT_EQ(ArtifactCompiler{path}.compileNow(source), CompileOutcome{CompilerUnavailable{}})
            << path.value_or("none") << " " << source.size();
    bool answered = false;
    auto job = ArtifactCompiler{"/bin/false"}.compile(large, [&](CompileOutcome outcome) {
        answered = std::holds_alternative<CompilerUnavailable>(outcome);
    });
    EXPECT_TRUE(testing::runMainLoopUntil([&] { return answered; }));
    EXPECT_EQ(pageJsonOf(CompilerUnavailable{}), std::nullopt);
}

TEST(ArtifactCompilerTest, CompilesAnswerFromTheMainLoopAndACancelledOneNeverAnswers) {
    std::vector<CompileOutcome> answers;
    auto job = esbuild.compile("export default () => <p>hi</p>;", [&](CompileOutcome outcome) {
        answers.push_back(std::move(outcome));
    });
    EXPECT_TRUE(answers.empty());
    ASSERT_TRUE(testing::runMainLoopUntil([&] { return !answers.empty(); }));
    EXPECT_THAT(pageJsonOf(answers.front()),
                ::testing::Optional(AllOf(HasSubstr(R"("imports":["react\/jsx-runtime"])"),
                                          HasSubstr(R"("exports":["default"])"))));

    // One that is missing answers later too, never from inside the call.
    bool unavailable = false;
    auto missing = ArtifactCompiler{std::nullopt}.compile("x", [&](CompileOutcome outcome) {
        unavailable = std::holds_alternative<CompilerUnavailable>(outcome);
    });
    EXPECT_FALSE(unavailable);
    EXPECT_TRUE(testing::runMainLoopUntil([&] { return unavailable; }));

    // Cancelled, by a call or by going away: nothing comes back, however long one waits.
    int late = 0;
    auto cancelled = esbuild.compile("export default 1;", [&](CompileOutcome) { ++late; });
    cancelled->cancel();
    esbuild.compile("export default 2;", [&](CompileOutcome) { ++late; }).reset();
    auto control = esbuild.compile("export default 3;", [&](CompileOutcome) { answers.clear(); });
    ASSERT_TRUE(testing::runMainLoopUntil([&] { return answers.empty(); }));
    testing::drainMainLoop();
    EXPECT_EQ(late, 0);
}

} // namespace
} // namespace kelmo
