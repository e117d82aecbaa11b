# Makes the copy of miniz that is built: TO/miniz.c and TO/miniz.h of FROM, with two faults of release 3.1.0 mended.
# usage: cmake -DFROM=FOLDER -DTO=FOLDER -P cmake/guard_miniz.cmake
# Fails where the sources are not those of that release, or an edit does not fit.
cmake_minimum_required(VERSION 3.24)

function(quilmark_check_source name expected)
  file(SHA256 "${FROM}/${name}" found)
  if(NOT found STREQUAL expected)
    message(FATAL_ERROR "${FROM}/${name} is not that of miniz 3.1.0: look at the edits of cmake/guard_miniz.cmake anew")
  endif()
endfunction()
quilmark_check_source(miniz.c 7487d4c8cd761b951a99d182672bb3badfa72a5ad5760b70b392fafa95223657)
quilmark_check_source(miniz.h 13a6940a8f33b3a76d4b64fb6d482b246954bae3bf5dc713f7f054d2096d0aba)

file(READ "${FROM}/miniz.c" text)

# Replaces `old`, which must stand in the text `count` times.
macro(quilmark_edit count old new)
  string(LENGTH "${text}" before)
  string(REPLACE "${old}" "" without "${text}")
  string(LENGTH "${without}" after)
  string(LENGTH "${old}" length)
  math(EXPR found "(${before} - ${after}) / ${length}")
  if(NOT found EQUAL ${count})
    message(FATAL_ERROR "miniz.c has ${found} times, not ${count}: ${old}")
  endif()
  string(REPLACE "${old}" "${new}" text "${text}")
endmacro()

# A code of no symbol, or of one, leaves places of its table empty, and an empty place reads as the symbol 0 of no
# bits: such a stream writes zeros for ever. The empty places get a symbol that none of the three alphabets has, of
# one bit, and whoever decodes it fails.
quilmark_edit(1 [[                    if (r->m_type == 2)
                    {
                        for (counter = 0;]] [[                    if (used_syms <= 1)
                    {
                        for (i = 0; i < TINFL_FAST_LOOKUP_SIZE; ++i)
                            if (!pLookUp[i])
                                pLookUp[i] = (mz_int16)((1 << 9) | 511);
                    }
                    if (r->m_type == 2)
                    {
                        for (counter = 0;]])
quilmark_edit(1 [[                            TINFL_HUFF_DECODE(16, dist, r->m_look_up[2], r->m_tree_2);
]] [[                            TINFL_HUFF_DECODE(16, dist, r->m_look_up[2], r->m_tree_2);
                            if (dist > 18)
                            {
                                TINFL_CR_RETURN_FOREVER(60, TINFL_STATUS_FAILED);
                            }
]])
quilmark_edit(1 [[                    num_extra = s_length_extra[counter - 257];
]] [[                    if (counter > 287)
                    {
                        TINFL_CR_RETURN_FOREVER(61, TINFL_STATUS_FAILED);
                    }
                    num_extra = s_length_extra[counter - 257];
]])
quilmark_edit(1 [[                    num_extra = s_dist_extra[dist];
]] [[                    if (dist > 31)
                    {
                        TINFL_CR_RETURN_FOREVER(62, TINFL_STATUS_FAILED);
                    }
                    num_extra = s_dist_extra[dist];
]])

# Offset and size of a directory or of an entry may wrap in their sum.
quilmark_edit(1 "if ((cdir_ofs + (mz_uint64)cdir_size) > pZip->m_archive_size)"
  "if ((cdir_ofs > pZip->m_archive_size) || (cdir_size > pZip->m_archive_size - cdir_ofs))")
quilmark_edit(2 "if ((cur_file_ofs + file_stat.m_comp_size) > pZip->m_archive_size)"
  "if ((cur_file_ofs > pZip->m_archive_size) || (file_stat.m_comp_size > pZip->m_archive_size - cur_file_ofs))")

# Written only where it changes, so that nothing is compiled in vain.
file(CONFIGURE OUTPUT "${TO}/miniz.c" CONTENT "${text}" @ONLY)

# What is left out is left out for whoever includes it too: the layout of its structures hangs on that.
file(READ "${FROM}/miniz.h" text)
set(left_out "")
foreach(name STDIO TIME ARCHIVE_WRITING_APIS ZLIB_APIS ZLIB_COMPATIBLE_NAMES)
  string(APPEND left_out "#define MINIZ_NO_${name}\n")
endforeach()
file(CONFIGURE OUTPUT "${TO}/miniz.h" CONTENT "${left_out}${text}" @ONLY)
