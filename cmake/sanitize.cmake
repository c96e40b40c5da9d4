# Address and undefined-behaviour sanitizers; any finding ends the program. The check of vptrs is left
# out: it needs a free descriptor to look at memory, and tests run the program out of them.
target_compile_options(cobweave_warnings INTERFACE
    -fsanitize=address,undefined -fno-sanitize=vptr -fno-sanitize-recover=all
    -fno-omit-frame-pointer)
target_link_options(cobweave_warnings INTERFACE -fsanitize=address,undefined)
