// Prints the type library of a DLL, or of a .tlb file, as text: print_type_library FILE
#include <fcntl.h>
#include <io.h>

#include <cstdio>
#include <exception>

#include "com/errors/at_boundary.h"
#include "com/handles/com_pointer.h"
#include "type_library/type_library_text.h"

int wmain(int count, wchar_t** arguments) {
    if (count != 2) {
        std::fputs("usage: print_type_library FILE\n", stderr);
        return 2;
    }
    try {
        kxjob::ComPointer<ITypeLib> library;
        kxjob::RequireSuccess(LoadTypeLibEx(arguments[1], REGKIND_NONE, library.ReceiveTyped()));
        _setmode(_fileno(stdout), _O_BINARY);  // the expected text has the line ends of its repository
        std::fputs(TypeLibraryText(*library.Get()).c_str(), stdout);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "print_type_library: %s\n", error.what());
        return 1;
    }
}
