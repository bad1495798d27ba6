#include "app/KmApp.h"

int WINAPI WinMain(HINSTANCE instance, HINSTANCE prev, LPSTR cmdLine, int cmdShow)
{
    return KmWinMain(theApp, instance, prev, cmdLine, cmdShow);
}
