# Schemas in the build tree as in an installation: links to those of the repository, and one schema
# of templates in each namespace under the name of every version that a template may state.
set(CHARTXML_SCHEMAS ${PROJECT_BINARY_DIR}/${CHARTXML_DATADIR}/schemas)

# Through a link to the whole folder, what is made below would land in the repository.
if(IS_SYMLINK ${CHARTXML_SCHEMAS})
  file(REMOVE ${CHARTXML_SCHEMAS})
endif()
file(MAKE_DIRECTORY ${CHARTXML_SCHEMAS})

file(GLOB CHARTXML_SCHEMA_FILES CONFIGURE_DEPENDS
     ${PROJECT_SOURCE_DIR}/schemas/*.xsd ${PROJECT_SOURCE_DIR}/schemas/*.dtd)
foreach(schema ${CHARTXML_SCHEMA_FILES})
  get_filename_component(name ${schema} NAME)
  file(CREATE_LINK ${schema} ${CHARTXML_SCHEMAS}/${name} SYMBOLIC)
endforeach()

# The versions MAJOR.0 to MAJOR.LAST of a schema; grammarpool.cpp lists the same.
function(chartxml_template_versions schema major last)
  foreach(minor RANGE ${last})
    set(name grafo-template-${major}.${minor}.xsd)
    if(NOT name STREQUAL schema)
      file(CREATE_LINK ${PROJECT_SOURCE_DIR}/schemas/${schema} ${CHARTXML_SCHEMAS}/${name} SYMBOLIC)
      install(FILES ${PROJECT_SOURCE_DIR}/schemas/${schema}
              DESTINATION ${CHARTXML_DATADIR}/schemas RENAME ${name})
    endif()
  endforeach()
endfunction()
chartxml_template_versions(grafo-template-1.0.xsd 1 10)
chartxml_template_versions(grafo-template-1.0.xsd 2 10)
chartxml_template_versions(grafo-template-3.5.xsd 3 5)
