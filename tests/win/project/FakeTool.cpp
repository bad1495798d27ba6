// A stand-in compiler or make, by its first argument: "quiet" succeeds and
// "none" fails silently; else it prints its command line, then "lots" many
// lines and succeeds, anything else errors on both outputs and fails.
#include <cstdio>
#include <cstring>
#include <windows.h>

int main(int argc, char** argv)
{
    const char* mode = argc > 1 ? argv[1] : "";
    if (!strcmp(mode, "quiet"))
        return 0;
    if (!strcmp(mode, "none"))
        return 1;
    setvbuf(stdout, nullptr, _IONBF, 0); // the two outputs in the order written
    printf("%s\n", ::GetCommandLineA());
    if (!strcmp(mode, "lots")) {
        for (int i = 0; i < 5000; ++i)
            printf("line %d of a long listing\n", i);
        return 0;
    }
    printf("src.c(2): error C2065: 'x' undeclared\n");
    fprintf(stderr, "src.c(3,5): warning: unused\n");
    return 2;
}
