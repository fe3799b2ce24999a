#pragma once

#include <cstdlib>
#include <memory>

/// Names a small PNG picture that text can embed. The file is only looked at when its size or its picture
/// is needed, so it need not exist when it is named. Not thread-safe, also where constant.
class Icon {
public:
    /// Takes a copy of `path` in place of the earlier one; the size becomes unknown. Null names no file.
    void Load(const char* path);

    /// Reads width and height from the file's PNG header; both are 0 when that fails.
    void LoadDim() const;

    /// The path, or null while none was given. Owned by the icon.
    const char* getPath() const { return path_.get(); }

    /// Size in pixels, read from the file when not yet known; 0 when it cannot be read.
    int getWidth() const;
    int getHeight() const;

private:
    struct Free {
        void operator()(char* text) const { std::free(text); }
    };

    std::unique_ptr<char, Free> path_;
    mutable int width_ = 0;
    mutable int height_ = 0;
};
