#include "filelist/FormatChecks.h"

#include "filelist/FormatCivil.h"
#include "filelist/FormatDateMask.h"
#include "filelist/FormatNumberMask.h"
#include "filelist/FormatReadNumber.h"
#include "filelist/FormatValueText.h"

namespace tav {

bool SizeFormatIsReversible(std::string_view mask) {
    const FormatResult shown = formatNumber(kSizeTestValue, mask);
    if (!shown.ok()) return false;
    const FormatResult plain = formatValueText(shown.text, "#");
    if (!plain.ok()) return false;
    return ReadNumber(plain.text) == static_cast<double>(kSizeTestValue);
}

std::string dateFormatProblem(std::string_view mask) {
    CivilDateTime date;
    date.year = 2000;
    date.month = 12;
    date.day = 29;
    if (formatDateTime(date, mask).ok()) return {};
    return "Date format is not correct. Examples of correct formats are dd/mm/yy, dd mmm yyyy, mm-dd-yy, etc. "
           "Try again.";
}

std::string timeFormatProblem(std::string_view mask) {
    CivilDateTime time;
    time.hour = 23;
    time.minute = 44;
    time.second = 1;
    if (formatDateTime(time, mask).ok()) return {};
    return "Time format is not correct. Examples of correct formats are hh:mm, hh:mm:ss, hh:mm AM/PM, etc. Try again.";
}

std::string sizeFormatProblem(std::string_view mask) {
    if (formatNumber(kSizeTestValue, mask).ok()) return {};
    std::string m = "The Size format entered <<\r";
    m += mask;
    m += "\r>> is not correct.\r\rSize format should be made up of characters:\r# to print number or nothing,\r"
         "0 to print number always,\r, as thousand separator.\r\rExamples of correct formats are:\r #   \r"
         " #,##0   \r #,##0,000   \r 0\r\rTry again.";
    return m;
}

std::string sizeNotReversiblePrompt(std::string_view mask) {
    std::string m = "Size format entered >> ";
    m += mask;
    m += " << contains characters other than , # 0. It cannot be used to determine total bytes (listed / selected).\r"
         "Press Yes to keep the entered size format and remove display of byte counts.  Press No to enter a "
         "different size format. #,##0 will not cause this problem.";
    return m;
}

FormatsVerdict checkEditedFormats(const WindowFormats& formats) {
    FormatsVerdict verdict;
    if (std::string m = dateFormatProblem(formats.date); !m.empty()) {
        verdict.failed = FormatsVerdict::Field::Date;
        verdict.message = std::move(m);
    } else if (std::string t = timeFormatProblem(formats.time); !t.empty()) {
        verdict.failed = FormatsVerdict::Field::Time;
        verdict.message = std::move(t);
    } else if (std::string s = sizeFormatProblem(formats.size); !s.empty()) {
        verdict.failed = FormatsVerdict::Field::Size;
        verdict.message = std::move(s);
    } else {
        verdict.sizeReversible = SizeFormatIsReversible(formats.size);
    }
    return verdict;
}

}  // namespace tav
