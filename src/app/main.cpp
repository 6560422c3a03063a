#include "app/batch_commands.h"
#include "app/command_line.h"
#include "app/duskwell_app.h"
#include "app/light_theme.h"
#include "app/renderer_choice.h"

#include <cstdio>
#include <cstring>
#include <giomm/application.h>
#include <string>
#include <vector>

int main(int argc, char* argv[]) {
    const std::vector<std::string> arguments(argv, argv + argc);
    if (const auto status = kelmo::runBatchCommand(arguments))
        return *status;
    // --help, --version and mistakes are answered without a display: the toolkit starts
    // with the application below.
    {
        bool goOn = false;
        auto options = Gio::Application::create("", Gio::Application::Flags::NON_UNIQUE |
                                                        Gio::Application::Flags::HANDLES_OPEN);
        kelmo::addCommandLineOptions(*options, [&goOn] {
            goOn = true;
            return 0;
        });
        const int status = options->run(argc, argv);
        if (!goOn)
            return status;
    }
    const auto files = kelmo::checkFileArguments(kelmo::fileArguments(arguments));
    for (const auto& missing : files.missing)
        std::fprintf(stderr, "kelmo: cannot open “%s”: %s\n", missing.c_str(),
                     std::strerror(ENOENT));
    if (!files.missing.empty() && files.existing.empty())
        return 1;

    std::vector<std::string> kept = kelmo::withoutMissingFiles(arguments, files.missing);
    std::vector<char*> keptArgv;
    for (auto& argument : kept)
        keptArgv.push_back(argument.data());
    keptArgv.push_back(nullptr);

    kelmo::preferLightThemeInEnvironment();
    const auto openGLSkipped = kelmo::skipOpenGLWithoutGraphicsDevice();
    // Creating the application initialises GTK.
    auto app = kelmo::DuskwellApp::create();
    openGLSkipped();
    return app->run(static_cast<int>(kept.size()), keptArgv.data());
}
