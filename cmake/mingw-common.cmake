# The posix thread model: GoogleTest needs std::mutex.
set(CMAKE_C_COMPILER ${KM_TRIPLE}-gcc-posix)
set(CMAKE_CXX_COMPILER ${KM_TRIPLE}-g++-posix)
set(CMAKE_RC_COMPILER ${KM_TRIPLE}-windres)
set(CMAKE_FIND_ROOT_PATH /usr/${KM_TRIPLE})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
# Static runtime: wine needs no MinGW DLLs beside the programs.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -static-libgcc -static-libstdc++")
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../scripts/wine-exec.sh)
