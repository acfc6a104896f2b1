# HALVORN_SANITIZE, for example "address,undefined", instruments every target of this build, tests
# and tool included: a sanitizer that covers only a part of a program misses faults between the parts.
set(HALVORN_SANITIZE "" CACHE STRING "Sanitizers of this build, separated by commas")
if(HALVORN_SANITIZE MATCHES "[; ]")
  message(FATAL_ERROR "HALVORN_SANITIZE is \"${HALVORN_SANITIZE}\": separate by commas alone")
endif()
if(HALVORN_SANITIZE)
  add_compile_options(
    -fsanitize=${HALVORN_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${HALVORN_SANITIZE})
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # gcc's manual: this warning has false positives in instrumented code, here in std::regex.
    add_compile_options($<$<COMPILE_LANGUAGE:CXX>:-Wno-maybe-uninitialized>)
  endif()
endif()
