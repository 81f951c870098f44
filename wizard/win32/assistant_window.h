// The wizard's window: it observes the form and shows it, and turns what the user does into the form's events. It holds
// no rule of the wizard.
#pragma once

#include <windows.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "wizard/assistant.h"
#include "wizard/win32/look.h"
#include "wizard/win32/picture.h"

namespace wizard::win32 {

class AssistantWindow : public form::FormObserver {
 public:
  /// Shows the assistant's form, which must be loaded, and observes it until destroyed.
  AssistantWindow(HINSTANCE instance, frmAssistantFirstSteps& assistant);
  ~AssistantWindow() override;
  AssistantWindow(const AssistantWindow&) = delete;
  AssistantWindow& operator=(const AssistantWindow&) = delete;

  /// The message loop; returns when the run has ended.
  void run();
  HWND handle() const noexcept { return window_; }

  void property_changed(const form::Control& control, form::Property property) override;
  void control_added(const form::Control& control) override;
  void focus_requested(const form::Control& control) override;
  void redraw_requested(const form::Control& control) override;

 private:
  struct Shown {
    const form::Control* control;
    HWND window;
    Picture picture;  ///< images
  };

  static LRESULT CALLBACK window_procedure(HWND window, UINT message, WPARAM first, LPARAM second);
  static LRESULT CALLBACK container_procedure(HWND window, UINT message, WPARAM first, LPARAM second);
  LRESULT handle_message(UINT message, WPARAM first, LPARAM second);

  // Building and placing.
  void create_window(HINSTANCE instance);
  void add(const form::Control& control);
  void show_all(Shown& shown);
  void place(Shown& shown);
  void place_all();
  void change_resolution(UINT dpi, const RECT& suggested);
  HWND parent_window(const form::Control& control) const;
  RECT place_in_parent(const form::Control& control) const;
  void load_picture_of(Shown& shown);
  void load_next_thumbnail();
  void add_tooltip(const Shown& shown);

  // Drawing.
  void paint_window();
  void draw_image(const DRAWITEMSTRUCT& item);
  void draw_images_below(HDC target, const Shown& image, const RECT& place);
  void redraw_images_around(const form::Control& control);
  LRESULT colour_text(HDC target, HWND child, UINT message);

  // Events.
  void command(int id, UINT code);
  void click(form::Control& control);
  void type(form::Control& control, HWND window);
  void choose(form::Control& control, HWND window);
  void scroll(HWND bar, int request, int position);
  void wheel(int delta);
  void raise_click(const form::Control& control);
  void after_event(int step_before);
  void focus_first_of_page();
  void focus_window(HWND window);
  Shown* shown_of(const form::Control& control);
  Shown* shown_by_id(int id);
  int id_of(const form::Control& control) const;

  frmAssistantFirstSteps& assistant_;
  HWND window_ = nullptr;
  HWND tooltips_ = nullptr;
  UINT dpi_ = 96;
  Fonts fonts_;
  Brush page_brush_;
  std::vector<std::unique_ptr<Shown>> shown_;  ///< position = id - first_id
  std::map<const form::Control*, Shown*> by_control_;
  std::vector<Shown*> thumbnails_to_load_;
  bool showing_ = false;          ///< a property is being shown: what the native control reports of it is no event
  bool focus_asked_for_ = false;  ///< by the event that is handled now
};

}  // namespace wizard::win32
