# program_resources(NAME DESCRIPTION [FILE]): adds what Windows wants to know about a program. Without it, Windows would
# take a console program for one from before Vista, and would redirect what it writes into protected folders to a copy
# that nobody else sees. FILE, an .rc file of the program's own, marks a program with a window; the program depends on
# the pictures that it names.
if(WIN32)
  enable_language(RC)
endif()

function(program_resources name description)
  if(NOT WIN32)
    return()
  endif()
  set(RESOURCE_NAME ${name})
  set(RESOURCE_DESCRIPTION ${description})
  set(templates ${CMAKE_SOURCE_DIR}/apps/resources)
  set(generated ${CMAKE_CURRENT_BINARY_DIR}/${name})
  string(REPLACE . , RESOURCE_VERSION ${PROJECT_VERSION})
  set(RESOURCE_WINDOW "")
  set(RESOURCE_OWN "")
  set(dependencies ${generated}.manifest)
  if(ARGC GREATER 2)
    file(READ ${templates}/window.xml RESOURCE_WINDOW)
    set(RESOURCE_OWN "#include \"${ARGV2}\"")
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${templates}/window.xml)
    file(GLOB pictures CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/wizard/win32/pictures/*)
    list(APPEND dependencies ${CMAKE_CURRENT_SOURCE_DIR}/${ARGV2} ${pictures})
  endif()
  configure_file(${templates}/program.manifest.in ${generated}.manifest @ONLY)
  configure_file(${templates}/program.rc.in ${generated}.rc @ONLY)
  set_source_files_properties(${generated}.rc PROPERTIES OBJECT_DEPENDS "${dependencies}" COMPILE_OPTIONS
    "-I${CMAKE_CURRENT_SOURCE_DIR};-I${CMAKE_CURRENT_BINARY_DIR};-I${CMAKE_SOURCE_DIR}/wizard/win32/pictures")
  target_sources(${name} PRIVATE ${generated}.rc)
endfunction()
