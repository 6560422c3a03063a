#include "app/duskwell_app.h"

int main(int argc, char* argv[]) {
    auto app = kelmo::DuskwellApp::create();
    return app->run(argc, argv);
}
