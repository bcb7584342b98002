set(MINGW_PROCESSOR i686)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
unset(CMAKE_CROSSCOMPILING_EMULATOR)   # nothing here runs a 32-bit program
