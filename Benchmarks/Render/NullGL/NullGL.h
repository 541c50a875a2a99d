#pragma once

/// \file
/// The parts of an OpenGL library that draws nothing. What a frame takes with it is what the scene
/// graph itself takes.
///
/// The library stands for libGL, libOpenGL and libEGL at once: its folder has links of these names
/// and is put on the loader's path. It answers as a driver of OpenGL 2.1 that has any object it is
/// asked for and no errors.

/// A function and its name.
struct NullGLFunction
{
    char const *name;
    void *function;
};

/// In the order of the names.
extern NullGLFunction const null_gl_functions[];
extern unsigned const null_gl_function_count;
/// How often each has been called.
extern unsigned long long null_gl_counts[];

/// Counts a call of a function that is written by hand.
void null_gl_count(char const *name);
/// Its counter, for one that is called often. The function exists.
unsigned long long *null_gl_counter(char const *name);
