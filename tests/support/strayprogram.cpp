// Writes behind a block, when it is called with an argument, and gives it back.
#include <cstdlib>

int main(int argumentCount, char**) {
    char* volatile const given = static_cast<char*>(std::malloc(13));
    if (argumentCount > 1)
        *static_cast<volatile char*>(given + 13) = 'x';
    std::free(given);
    return 0;
}
