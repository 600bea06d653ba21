# The field reference and the completions, made from the program's own tables.
add_executable(tagmend_reference
  tools/reference.cpp tools/reference_completion.cpp tools/reference_fields.cpp
  tools/reference_markdown.cpp)
set_target_properties(tagmend_reference PROPERTIES OUTPUT_NAME tagmend-reference)
target_link_libraries(tagmend_reference PRIVATE tagmend_cli)

# A completion is the tables for its shell and the script that uses them.
set(TAGMEND_COMPLETIONS ${CMAKE_BINARY_DIR}/completions)
set(generated)
function(tagmend_completion shell name)  # by the name under which the shell looks for it
  set(script ${CMAKE_SOURCE_DIR}/completions/tagmend.${shell})
  set(output ${TAGMEND_COMPLETIONS}/${shell}/${name})
  file(MAKE_DIRECTORY ${TAGMEND_COMPLETIONS}/${shell})
  add_custom_command(OUTPUT ${output}
    COMMAND tagmend_reference ${shell} > ${output}
    COMMAND ${CMAKE_COMMAND} -E cat ${script} >> ${output}
    DEPENDS tagmend_reference ${script}
    COMMENT "Making the ${shell} completion" VERBATIM)
  set(generated ${generated} ${output} PARENT_SCOPE)
endfunction()
tagmend_completion(bash tagmend)
tagmend_completion(zsh _tagmend)
tagmend_completion(fish tagmend.fish)

# docs/fields.md is kept in the tree, where it can be read without a build. After a change of the
# dictionary: cmake --build build --target fields.
set(TAGMEND_FIELDS ${CMAKE_BINARY_DIR}/fields.md)
add_custom_command(OUTPUT ${TAGMEND_FIELDS}
  COMMAND tagmend_reference markdown > ${TAGMEND_FIELDS}
  DEPENDS tagmend_reference
  COMMENT "Making the field reference" VERBATIM)
list(APPEND generated ${TAGMEND_FIELDS})

add_custom_target(reference ALL DEPENDS ${generated})
add_custom_target(fields
  COMMAND ${CMAKE_COMMAND} -E copy ${TAGMEND_FIELDS} ${CMAKE_SOURCE_DIR}/docs/fields.md
  DEPENDS ${TAGMEND_FIELDS} VERBATIM)
