/* What the other compiler's run-time library would bring, which is not at hand: the start of the program,
   printf, and what the compiler calls by itself. The C functions come from the system's msvcrt.dll. */

#include <windows.h>

#include <stdarg.h>
#include <stdio.h>

int main(int count, char** arguments);
int __getmainargs(int* count, char*** arguments, char*** environment, int expand, int* startInfo);

int _fltused = 0; /* says that numbers with a point are used */

/* Where the headers send the printf family of C++. */
int __mingw_vfprintf(FILE* file, const char* format, va_list values) {
    return vfprintf(file, format, values);
}
int __mingw_vsprintf(char* text, const char* format, va_list values) {
    return vsprintf(text, format, values);
}

int _purecall(void) {
    puts("a function without a body was called");
    ExitProcess(3);
}

void mainCRTStartup(void) {
    int count = 0;
    int startInfo = 0;
    int result;
    char** arguments = NULL;
    char** environment = NULL;
    setvbuf(stdout, NULL, _IONBF, 0); /* what was printed stands, even when the program crashes */
    __getmainargs(&count, &arguments, &environment, 0, &startInfo);
    result = main(count, arguments);
    fflush(NULL);
    ExitProcess((UINT)result);
}
