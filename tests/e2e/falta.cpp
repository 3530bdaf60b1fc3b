// A program with one fault of each kind, for the test that the harness notices what a sanitizer reports. It is built
// with the sanitizers in every build. Its argument chooses the fault; without one it ends well.
#include <climits>
#include <string_view>

int main(int argc, char **argv) {
    const std::string_view falta = argc > 1 ? argv[1] : "";
    if (falta == "memoria") {
        auto *volatile cuatro = new char[4];
        char *volatile fuera = cuatro + 8;
        *fuera = 1;
        delete[] cuatro;
    }
    if (falta == "cuenta") {
        volatile int mayor = INT_MAX;
        mayor = mayor + 1;
    }
    if (falta == "fuga") {
        char *volatile perdido = new char[4];
        perdido = nullptr;
        return perdido != nullptr ? 1 : 0;
    }
    return 0;
}
