# What linkers offer against faults being used by hostile files. Left out where sanitizers look
# for the faults themselves.
add_library(belvor_hardening INTERFACE)
if(WIN32)
  target_link_options(belvor_hardening INTERFACE -Wl,--dynamicbase,--nxcompat)
  if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    target_link_options(belvor_hardening INTERFACE -Wl,--high-entropy-va)
  endif()
else()
  target_link_options(belvor_hardening INTERFACE -Wl,-z,relro,-z,now,-z,noexecstack)
endif()
