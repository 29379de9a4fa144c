#include <exception>
#include <new>
#include <utility>

#include "kortavin/base/texts.h"
#include "kortavin/window/messagebox.h"
#include "kortavin/window/windowrecord.h"

namespace kortavin::window {
namespace {

// A dialog's loop that is running; the innermost one takes the errors that nobody else would hear of.
struct ModalRun {
    explicit ModalRun(WindowRecord* dialogWindow);
    ~ModalRun();
    ModalRun(const ModalRun&) = delete;
    ModalRun& operator=(const ModalRun&) = delete;

    WindowRecord* dialog;
    ModalRun* outer;
    std::exception_ptr error;
};

constinit ModalRun* s_innermost = nullptr;

ModalRun::ModalRun(WindowRecord* dialogWindow)
    : dialog(dialogWindow), outer(std::exchange(s_innermost, this)) {}
ModalRun::~ModalRun() {
    s_innermost = outer;
}

void EndRunWithCurrentError(ModalRun& run) {
    if (run.error == nullptr)
        run.error = std::current_exception();
    if (IsWindow(run.dialog))
        RequireToolkit().EndModal(run.dialog->Native());
}

void ShowUnknownError(const char* what) {
    CString text;
    text.Format(base::Text(base::TextId::UnknownError), what);
    AfxMessageBox(text);
}

}  // namespace

void RunModal(WindowRecord* dialog) {
    ModalRun run(dialog);
    RequireToolkit().RunModal(dialog->Native());
    if (run.error != nullptr)
        std::rethrow_exception(run.error);
}

// An error in showing the error is dropped.
void ReportCurrentError() noexcept try {
    try {
        throw;
    } catch (const CException& error) {
        AfxMessageBox(error.GetErrorMessage());
    } catch (const std::bad_alloc&) {
        AfxMessageBox(CMemoryException().GetErrorMessage());
    } catch (const std::exception& error) {
        s_innermost != nullptr ? EndRunWithCurrentError(*s_innermost) : ShowUnknownError(error.what());
    } catch (...) {
        s_innermost != nullptr ? EndRunWithCurrentError(*s_innermost) : ShowUnknownError("");
    }
} catch (...) {
}

}  // namespace kortavin::window
