# A module that travels: what of the engine works on texts is optimised for size, and what works on
# numbers for speed, which it would lose by a factor of ten.
set(texts ${sources})
list(FILTER texts INCLUDE REGEX "(^|/)(base|catalogue|figure|hosts|read|search|shapes|values|write)/")
list(REMOVE_ITEM sources ${texts})
set_property(TARGET halvorn_engine PROPERTY SOURCES ${sources})
add_library(halvorn_engine_texts OBJECT ${texts})
foreach(property IN ITEMS COMPILE_DEFINITIONS COMPILE_OPTIONS CXX_EXTENSIONS INCLUDE_DIRECTORIES
    LINK_LIBRARIES UNITY_BUILD UNITY_BUILD_MODE)
  get_target_property(value halvorn_engine ${property})
  set_property(TARGET halvorn_engine_texts PROPERTY ${property} "${value}")
endforeach()
target_compile_features(halvorn_engine_texts PRIVATE cxx_std_20)
target_compile_options(halvorn_engine_texts PRIVATE -Os)
target_sources(halvorn_engine PRIVATE $<TARGET_OBJECTS:halvorn_engine_texts>)
