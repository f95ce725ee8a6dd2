// File names for every tool of the tool chain: splitting and joining them, adding and
// removing extensions, temporary names, tests, renaming, listing a directory, and the
// names that stand for a stream instead of a file. The separator is "/", names compare
// case-sensitively, and a full path begins with "/".
//
// Names are NUL-terminated byte strings in no particular encoding and, unless a
// contract says otherwise, not null. No function knows the size of a caller's buffer.
// Memory that a function allocates for its caller is released with free; when there is
// none left, "ERROR: out of memory" goes to standard error and the process exits with
// status 1. The module keeps static state and is single-threaded.
#pragma once

#include <cstdio>
#include <string>

// Splitting and joining

// Splits `name` into its directory with the trailing "/" ("" when it has none), its
// base, and its extension without the point. Each output pointer that is not null is
// set to a static buffer that the next call, and fn_matches_ext, overwrite; `name` must
// not lie in one of them. The extension begins after the last point of the last
// component; with nothing after that point it is empty and the point stays in the base.
// A null or empty name gives three empty strings. Each part is cut to 499 characters;
// a base that was cut in front of an extension holds 498.
void fn_split(const char* name, const char** dir, const char** base, const char** ext);

// Joins a directory, a base and an extension in `dst`, which must have room for the
// result and hold none of the parts, or in a new allocation of the caller's when `dst`
// is null: the lengths of the parts that are not null, 1 more for each, and 1. Returns
// the result. A "/" is put behind a directory and a "." before an extension that do not
// have theirs; an empty or null part adds nothing.
char* fn_build(char* dst, const char* dir, const char* base, const char* ext);

// Adds an extension to `name` in place, or replaces the one it has when `replace` is
// not 0. `name` must have room for the result. `ext` may be given with or without its
// point; null changes nothing. A name has an extension when no "/" follows its last
// point. Such a name keeps it when `replace` is 0; otherwise the text after the point
// becomes `ext`, and an empty `ext` takes the point away too. A name without one gets
// a point and `ext`, unless `ext` is empty.
void fn_addext(char* name, const char* ext, int replace);

// Cuts `name` at its last point when no "/" follows it; otherwise leaves it alone.
void fn_delext(char* name);

// 1 when `name` contains a "/", else 0.
int fn_hasdir(const char* name);

// The part of `name` after its last "/": a pointer into `name`, to its terminator when
// it ends in "/". Null for a null or empty name.
const char* fn_basename(const char* name);

// True when the extension that fn_split finds in `name`, which has no point, equals
// `ext` exactly. Overwrites fn_split's buffers; `ext` must not lie in one of them.
bool fn_matches_ext(const char* name, const char* ext);

// 1 when `name` begins with "/", else 0.
int fn_has_full_path(const char* name);

// 1 when `name` begins with "./" or "../", else 0: a plain name is not relative in
// this sense.
int fn_has_relative_path(const char* name);

// Comparing

// 0 when the names are equal; otherwise the difference of the first two bytes that
// differ, each taken as a signed 8-bit value, the end of a name as 0.
int fn_strcmp(const char* a, const char* b);

// 1 when both names denote one file, else 0; 0 when the status of either cannot be
// read, even if the names are equal.
int fn_samefile(const char* a, const char* b);

// Names made anew

// A copy of `name` in a new allocation of the caller's. Nothing is resolved.
char* fn_realname(const char* name);

// The name of a file that does not exist yet, in the directory that TMPDIR names, else
// in `dir`, else in the system's directory for temporary files; the first of them that
// is a directory. `dir` may be null. The last component begins with "Ze" and three
// letters or digits made from the process id. Stored in `dst`, which must have room for
// the name (PATH_MAX bytes always do), and `dst` returned; when `dst` is null, returned
// in a new allocation of the caller's. The second argument is ignored. The file is not
// created: another process can take the name first. Sets errno to 0 before it asks the
// system. Without a result, writes "ERROR: cannot create temporary file name; " and
// "out of memory" or "check directory permissions" to standard error and exits with
// status 1.
char* fn_tmpnam(char* dst, const char* ignored, const char* dir);

// The working directory in `buf`, which must hold 500 bytes, or in a new allocation of
// 501 bytes that is the caller's when `buf` is null. Returns the area. On failure, a
// directory of 500 or more characters included, writes "getcwd in fn_get_working_dir: "
// and the system's error to standard error; the area's contents are then undefined.
char* fn_get_working_dir(char* buf);

// A name that was given as plain text as a file name, and back: copies here.
std::string cstr_to_fn(const std::string& text);
std::string fn_to_cstr(const std::string& name);

// Files and directories

// 1 when the status of the file can be read, else 0.
int fn_exists(const char* name);

// True when the file exists and its size is 0; false when it does not exist, cannot be
// examined or holds something.
bool fn_is_empty(const char* name);

// The same for an open stream, which is flushed first; false for a stream that has no
// file descriptor.
bool file_is_empty(FILE* stream);

// Removes a file or an empty directory. 0 on success; on failure not 0, with errno.
int fn_delete(const char* name);

// Renames a file; across devices, copies it. 1 on success, 0 on failure. A copied
// source is left in place, and so is the part of a copy that failed: both are the
// caller's to remove.
int fn_rename(const char* from, const char* to);

// Changes the working directory; null does nothing. On failure writes "chdir in
// fn_change_dir: " and the system's error to standard error and returns.
void fn_change_dir(const char* dir);

// Lists a directory: begins with its name in `dir` and goes on with null, one entry a
// call, in the system's order, "." and ".." included. Null at the end, when the
// directory cannot be opened (a listing in progress is given up), and when no listing
// is in progress. The name belongs to the directory stream and is valid until the next
// call. One listing at a time; its stream stays open at the end, so a process that
// lists many directories runs out of descriptors. *flag is set to 0.
const char* fn_get_dir_entry(const char* dir, int* flag);

// Names and streams with a meaning of their own

// True when `stream` is standard output or standard error.
bool user_specified_advice_stream(FILE* stream);

// True when `name` is "stdout" or "stderr", which denote a stream instead of a file.
bool fn_is_user_specified_stream(const char* name);

// True when `name` is "none", which disables an output.
bool fn_explicit_disable(const char* name);
