// _dupenv_s, which the runtime of mingw-w64 declares and does not bring: the value of a variable in
// a block of the runtime's heap.
#include <cerrno>
#include <cstdlib>
#include <cstring>

namespace {

int duplicateVariable(char** value, std::size_t* length, const char* name) {
    if (value == nullptr || name == nullptr) return EINVAL;
    *value = nullptr;
    if (length != nullptr) *length = 0;
    const char* const found = std::getenv(name);
    if (found == nullptr) return 0;
    *value = _strdup(found);
    if (*value == nullptr) return ENOMEM;
    if (length != nullptr) *length = std::strlen(found) + 1;
    return 0;
}

}  // namespace

extern "C" {
// What a call of the declared function goes through, in the place of an import. The compiler for 32
// bits puts an underscore before each name and the one for 64 bits does not, so that each build
// links one of the two.
int (*_imp___dupenv_s)(char**, std::size_t*, const char*) = duplicateVariable;
int (*__imp__dupenv_s)(char**, std::size_t*, const char*) = duplicateVariable;
}
