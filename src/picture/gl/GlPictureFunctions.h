#pragma once

#include <QtGui/qopengl.h>

#include <functional>

namespace daylark {

/// The functions of OpenGL 3.3 core that the picture renderer uses, found in the context that is current on
/// the calling thread; so it works with any window system's context, or without a window at all. Complete or
/// not loaded.
struct GlPictureFunctions {
    using Resolver = std::function<QFunctionPointer(const char* name)>;

#define DAYLARK_GL_FUNCTIONS(X)                                                                              \
    X(void, ActiveTexture, (GLenum))                                                                         \
    X(void, AttachShader, (GLuint, GLuint))                                                                  \
    X(void, BindTexture, (GLenum, GLuint))                                                                   \
    X(void, BindVertexArray, (GLuint))                                                                       \
    X(void, BlendFunc, (GLenum, GLenum))                                                                     \
    X(void, CompileShader, (GLuint))                                                                         \
    X(GLuint, CreateProgram, ())                                                                             \
    X(GLuint, CreateShader, (GLenum))                                                                        \
    X(void, DeleteProgram, (GLuint))                                                                         \
    X(void, DeleteShader, (GLuint))                                                                          \
    X(void, DeleteTextures, (GLsizei, const GLuint*))                                                        \
    X(void, DeleteVertexArrays, (GLsizei, const GLuint*))                                                    \
    X(void, Disable, (GLenum))                                                                               \
    X(void, DrawArrays, (GLenum, GLint, GLsizei))                                                            \
    X(void, Enable, (GLenum))                                                                                \
    X(void, GenTextures, (GLsizei, GLuint*))                                                                 \
    X(void, GenVertexArrays, (GLsizei, GLuint*))                                                             \
    X(GLenum, GetError, ())                                                                                  \
    X(void, GetIntegerv, (GLenum, GLint*))                                                                   \
    X(void, GetProgramiv, (GLuint, GLenum, GLint*))                                                          \
    X(void, GetShaderInfoLog, (GLuint, GLsizei, GLsizei*, char*))                                            \
    X(const GLubyte*, GetString, (GLenum))                                                                   \
    X(GLint, GetUniformLocation, (GLuint, const char*))                                                      \
    X(void, LinkProgram, (GLuint))                                                                           \
    X(void, PixelStorei, (GLenum, GLint))                                                                    \
    X(void, ShaderSource, (GLuint, GLsizei, const char* const*, const GLint*))                               \
    X(void, TexImage1D, (GLenum, GLint, GLint, GLsizei, GLint, GLenum, GLenum, const void*))                 \
    X(void, TexImage2D, (GLenum, GLint, GLint, GLsizei, GLsizei, GLint, GLenum, GLenum, const void*))        \
    X(void, TexImage3D, (GLenum, GLint, GLint, GLsizei, GLsizei, GLsizei, GLint, GLenum, GLenum, const void*)) \
    X(void, TexParameteri, (GLenum, GLenum, GLint))                                                          \
    X(void, TexSubImage2D, (GLenum, GLint, GLint, GLint, GLsizei, GLsizei, GLenum, GLenum, const void*))     \
    X(void, Uniform1f, (GLint, GLfloat))                                                                     \
    X(void, Uniform1i, (GLint, GLint))                                                                       \
    X(void, Uniform2f, (GLint, GLfloat, GLfloat))                                                            \
    X(void, Uniform2i, (GLint, GLint, GLint))                                                                \
    X(void, Uniform3f, (GLint, GLfloat, GLfloat, GLfloat))                                                   \
    X(void, UniformMatrix3fv, (GLint, GLsizei, GLboolean, const GLfloat*))                                   \
    X(void, UseProgram, (GLuint))                                                                            \
    X(void, Viewport, (GLint, GLint, GLsizei, GLsizei))

#define DAYLARK_GL_MEMBER(result, name, arguments) result(QOPENGLF_APIENTRYP name) arguments = nullptr;
    DAYLARK_GL_FUNCTIONS(DAYLARK_GL_MEMBER)
#undef DAYLARK_GL_MEMBER

    /// False when one is missing.
    [[nodiscard]] bool load(const Resolver& resolve) {
        bool complete = true;
#define DAYLARK_GL_LOAD(result, name, arguments)                                                             \
    name = reinterpret_cast<result(QOPENGLF_APIENTRYP) arguments>(resolve("gl" #name));                      \
    complete = complete && name;
        DAYLARK_GL_FUNCTIONS(DAYLARK_GL_LOAD)
#undef DAYLARK_GL_LOAD
        return complete;
    }
};

} // namespace daylark
