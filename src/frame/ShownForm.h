// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <utility>

namespace KestrinProductEditor {

/// A launcher's form in the launcher's field, until the end of the scope; then the one that an outer Show has
/// put there.
template<class Form>
class ShownForm
{
public:
    explicit ShownForm(std::shared_ptr<Form>& field)
        : m_field(field), m_outer(std::exchange(field, std::make_shared<Form>()))
    {
    }
    ShownForm(const ShownForm&) = delete;
    ShownForm& operator=(const ShownForm&) = delete;
    ~ShownForm() { m_field = std::move(m_outer); }

private:
    std::shared_ptr<Form>& m_field;
    std::shared_ptr<Form> m_outer;
};

} // namespace KestrinProductEditor
