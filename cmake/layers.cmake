# One static library per layer, each seeing only its own headers and those of the layers it
# links: a layer's headers are offered under their layer's name ("foundation/registry.h") from an
# include root of its own, which holds nothing but a link to the layer's folder. An include that
# points up a layer, or across to one the layer does not link, finds no such file and fails to
# build.

# parvane_layer(NAME FOLDER [PUBLIC libs...] [PRIVATE libs...]): the sources of src/FOLDER (and
# of src/FOLDER/<platform> for the platform layer) as the library NAME.
function(parvane_layer name folder)
    cmake_parse_arguments(LAYER "" "" "PUBLIC;PRIVATE;SOURCES" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/${folder}/*.cpp)
    add_library(${name} STATIC ${sources} ${LAYER_SOURCES})
    set(root ${PROJECT_BINARY_DIR}/layers/${name})
    get_filename_component(parent ${root}/${folder} DIRECTORY)
    file(MAKE_DIRECTORY ${parent})
    file(CREATE_LINK ${PROJECT_SOURCE_DIR}/src/${folder} ${root}/${folder} SYMBOLIC)
    target_include_directories(${name} PUBLIC ${root})
    target_link_libraries(${name} PUBLIC ${LAYER_PUBLIC} PRIVATE ${LAYER_PRIVATE})
endfunction()
