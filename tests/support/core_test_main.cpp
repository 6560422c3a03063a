// Test entry for the core, in a throw-away home.

#include "test_support.h"

#include <giomm/init.h>

int main(int argc, char** argv) {
    return kelmo::testing::runAllTestsInThrowAwayHome(argc, argv, [] { Gio::init(); });
}
