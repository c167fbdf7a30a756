#pragma once

#include "base/ui/WindowPlacement.h"

#include <QPointer>
#include <QWidget>

#include <utility>

// One window per form, as the system has one instance of each: a form derives from
// OneWindow<Form>, and a second opening brings the open window forward instead of making
// another. The form declares OneWindow<Form> its friend when its constructor is private.
template <typename Form>
class OneWindow
{
  public:
    // The open window of the form, or nullptr.
    static Form *openWindow() { return s_open.data(); }

  protected:
    // The open window, or the one `make` gives, which then is the open one.
    template <typename Make>
    static Form *openOrMake(Make &&make)
    {
        if (!s_open)
            s_open = std::forward<Make>(make)();
        return s_open.data();
    }

    // Makes `made` the open window, in place of one that has given way to it.
    static Form *adopt(Form *made)
    {
        s_open = made;
        return made;
    }

    // Runs the form modally, made with `args` after its parent; while it runs, a second call
    // brings it forward and returns at once.
    template <typename... Args>
    static void execOnce(QWidget *parent, Args &&...args)
    {
        if (s_open) {
            bringForward(s_open.data());
            return;
        }
        Form form(parent, std::forward<Args>(args)...);
        s_open = &form;
        keepOnScreen(&form);
        form.exec();
    }

  private:
    static inline QPointer<Form> s_open;
};
