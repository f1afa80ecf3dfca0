// nfc_ndef.Reader and nfc_ndef.Tag: tags on readers of PC/SC.
#include "reader.h"

#include "message.h"
#include "record.h"
#include "refused.h"

#include <nfc_ndef/tags/pcsc.h>
#include <nfc_ndef/tags/tag.h>

#include <chrono>
#include <map>
#include <mutex>
#include <thread>

namespace python {

namespace tags = nfc_ndef::tags;

namespace {

using Clock = std::chrono::steady_clock;

// A tag as long as its reader holds it. Calls wait without the interpreter's lock, so that this has one of its own.
class Tag {
public:
    Tag(std::unique_ptr<tags::Card> card, std::string reader) : card_(std::move(card)), reader_(std::move(reader))
    {
        try {
            tag_ = tags::open_tag(*card_);
        } catch (const tags::Gone &) {
            throw;
        } catch (const tags::Refused &refused) {
            trouble_ = refused.what();
        }
    }

    // Calls with the tag. Throws Refused for a card that is no tag for NDEF data, and Unavailable when it was let go.
    template <class Use> auto with(Use use)
    {
        const py::gil_scoped_release release;
        const std::lock_guard<std::mutex> alone(one_at_a_time_);
        if (!card_)
            throw tags::Unavailable("the reader has let go of the tag");
        if (!tag_)
            throw tags::Refused(trouble_);
        return use(*tag_);
    }

    void let_go()
    {
        const py::gil_scoped_release release;
        const std::lock_guard<std::mutex> alone(one_at_a_time_);
        tag_.reset();
        card_.reset();
    }

    const std::string &reader() const { return reader_; }

private:
    std::mutex one_at_a_time_;
    std::unique_ptr<tags::Card> card_;
    std::unique_ptr<tags::Tag> tag_;
    std::string reader_, trouble_;
};

class Reader {
public:
    Reader(std::string name, std::optional<double> timeout) : name_(std::move(name)), timeout_(timeout)
    {
        const py::gil_scoped_release release;
        service_ = std::make_unique<tags::Service>();
    }

    // The next tag that comes, or that lies there and was not handed out; null when none comes in time.
    std::shared_ptr<Tag> wait(std::optional<double> timeout)
    {
        constexpr auto pause = std::chrono::milliseconds(100);
        constexpr double longest = 1e9;
        const double seconds = timeout ? std::min(*timeout >= 0 ? *timeout : 0, longest) : longest;
        const auto end =
            Clock::now() + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds));
        let_go();
        for (;;) {
            if (std::shared_ptr<Tag> tag = look(); tag || Clock::now() >= end)
                return tag;
            {
                const py::gil_scoped_release release;
                std::this_thread::sleep_for(pause);
            }
            if (PyErr_CheckSignals() != 0)
                throw py::error_already_set();
        }
    }
    std::shared_ptr<Tag> next()
    {
        std::shared_ptr<Tag> tag = wait(timeout_);
        if (!tag)
            throw py::stop_iteration();
        return tag;
    }

    void close()
    {
        let_go();
        const py::gil_scoped_release release;
        const std::lock_guard<std::mutex> alone(one_at_a_time_);
        service_.reset();
    }

private:
    void let_go()
    {
        std::shared_ptr<Tag> tag;
        {
            const py::gil_scoped_release release;
            const std::lock_guard<std::mutex> alone(one_at_a_time_);
            tag.swap(tag_);
        }
        if (tag)
            tag->let_go();
    }

    // A tag that is there and was not handed out. Waits without the interpreter's lock, as the tag does.
    std::shared_ptr<Tag> look()
    {
        const py::gil_scoped_release release;
        const std::lock_guard<std::mutex> alone(one_at_a_time_);
        if (!service_)
            throw tags::Unavailable("the reader is closed");
        for (const tags::Reader &reader : service_->readers()) {
            const auto before = seen_.find(reader.name);
            const bool is_new = before == seen_.end() || before->second != reader.events;
            if (reader.name.find(name_) == std::string::npos || !reader.has_card || !is_new)
                continue;
            seen_[reader.name] = reader.events;
            try {
                tag_ = std::make_shared<Tag>(service_->wait_for_card(reader.name, std::chrono::milliseconds(0)),
                                             reader.name);
                return tag_;
            } catch (const tags::Unavailable &) { // it was there for a moment only
            }
        }
        return nullptr;
    }

    std::mutex one_at_a_time_;
    std::string name_;
    std::optional<double> timeout_;
    std::unique_ptr<tags::Service> service_;
    std::map<std::string, unsigned> seen_; // by reader, the event with which its tag came
    std::shared_ptr<Tag> tag_;             // held at the moment
};

py::object message_on(Tag &tag)
{
    const tags::Bytes bytes = tag.with([](tags::Tag &held) { return held.read(); });
    return bytes.empty() ? py::none() : message_in(bytes_object(nfc_ndef::values::text_of(bytes)).ptr());
}

void write(Tag &tag, const py::object &message)
{
    const py::object bytes = PyBytes_Check(message.ptr()) != 0 ? message : encoded(message.ptr());
    message_in(bytes.ptr()); // which refuses what is none
    const nfc_ndef::values::ByteView view = nfc_ndef::values::view_of(bytes.cast<std::string_view>());
    tag.with([&](tags::Tag &held) { held.write(view); });
}

std::vector<std::string> reader_names()
{
    const py::gil_scoped_release release;
    std::vector<std::string> names;
    for (const tags::Reader &reader : tags::Service().readers())
        names.push_back(reader.name);
    return names;
}

} // namespace

void create_reader_types(py::module_ &module)
{
    new_error_class(module, "TagUnavailable", PyExc_OSError,
                    "There is nobody to ask: no PC/SC service, no reader, no tag, or it was taken away.");
    new_error_class(module, "TagRefused", PyExc_OSError,
                    "The tag does not do it: it is not formatted, too small, read-only, or of another kind.");
    py::register_exception_translator([](std::exception_ptr thrown) {
        const auto raise_as = [](const char *name, const std::exception &exception) {
            PyErr_SetString(py::module_::import("nfc_ndef._core").attr(name).ptr(), exception.what());
        };
        try {
            std::rethrow_exception(thrown);
        } catch (const tags::Refused &exception) {
            raise_as("TagRefused", exception);
        } catch (const tags::Unavailable &exception) {
            raise_as("TagUnavailable", exception);
        }
    });

    py::options options;
    options.disable_function_signatures();

    py::class_<Tag, std::shared_ptr<Tag>>(module, "Tag",
                                          R"(A tag on a reader, held until the reader is asked for the next one.

Whatever it is asked for may raise TagUnavailable, and TagRefused.)")
        .def_property_readonly("reader", &Tag::reader, "The name of the reader that it lies on.")
        .def_property_readonly(
            "type", [](Tag &tag) { return tag.with([](tags::Tag &held) { return std::string(held.type()); }); },
            "What it is, such as \"Type 2 tag\".")
        .def_property_readonly(
            "serial_number",
            [](Tag &tag) {
                return bytes_object(
                    nfc_ndef::values::text_of(tag.with([](tags::Tag &held) { return held.serial_number(); })));
            },
            "Its serial number as bytes; empty when the reader does not tell.")
        .def_property_readonly(
            "is_formatted", [](Tag &tag) { return tag.with([](tags::Tag &held) { return held.is_formatted(); }); },
            "Whether it is made for NDEF data.")
        .def_property_readonly(
            "is_writable", [](Tag &tag) { return tag.with([](tags::Tag &held) { return held.is_writable(); }); },
            "Whether its message may be replaced.")
        .def_property_readonly(
            "size", [](Tag &tag) { return tag.with([](tags::Tag &held) { return held.size(); }); },
            "How many bytes the longest message has that it can hold.")
        .def_property_readonly("message", message_on, "Its Message, read anew; None when it is empty.")
        .def_property_readonly(
            "memory",
            [](Tag &tag) {
                return bytes_object(nfc_ndef::values::text_of(tag.with([](tags::Tag &held) { return held.memory(); })));
            },
            "All of its memory that can be read, as bytes.")
        .def("write", write, py::arg("message"), R"(write(message)

Replaces its message: by bytes, a Message, records, or values that records are made of, and reads it back.)")
        .def(
            "erase", [](Tag &tag) { tag.with([](tags::Tag &held) { held.write({}); }); }, "Takes its message away.")
        .def(
            "format", [](Tag &tag) { tag.with([](tags::Tag &held) { held.format(); }); }, "Prepares a blank tag.")
        .def(
            "lock", [](Tag &tag) { return tag.with([](tags::Tag &held) { return held.lock(); }); },
            "Makes it read-only, for good. Gives a remark, or nothing.");

    py::class_<Reader>(module, "Reader", R"(Reader(name="", timeout=None)

The readers whose names hold `name`, and the tags that come onto them, one after another.

Iterating waits for each tag; it ends when none comes in `timeout` seconds.)")
        .def(py::init<std::string, std::optional<double>>(), py::arg("name") = "", py::arg("timeout") = py::none())
        .def("__enter__", [](const py::object &self) { return self; })
        .def("__exit__", [](Reader &reader, const py::args &) { reader.close(); })
        .def("__iter__", [](const py::object &self) { return self; })
        .def("__next__", &Reader::next)
        .def("wait", &Reader::wait, py::arg("timeout") = py::none(),
             "wait(timeout=None)\n\nThe next tag; None when none comes in so many seconds.")
        .def("close", &Reader::close, "Lets go of the tag and of the service.");

    module.def("reader_names", reader_names, "reader_names()\n\nThe names of the readers that are there.");
}

} // namespace python
