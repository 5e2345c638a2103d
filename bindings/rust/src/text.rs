//! Texts and dictionaries as lumeq.h takes them, for the time of a call.

use crate::raw;

/// Free-form fields: names and values. The last of two equal names counts.
pub type Fields<'a> = &'a [(&'a str, &'a str)];

/// What any event may carry.
#[derive(Clone, Copy, Default)]
pub struct Context<'a> {
    pub local: Fields<'a>,
    /// The device model of this event instead of that of [`crate::set_model`].
    pub model: Option<&'a str>,
}

/// NUL-terminated UTF-16. No host can make one.
pub struct Text(Vec<u16>);

impl Text {
    pub(crate) fn new(text: &str) -> Self {
        Self(text.encode_utf16().chain([0]).collect())
    }

    pub(crate) fn get(&self) -> *const u16 {
        self.0.as_ptr()
    }
}

/// Null for none.
pub(crate) struct OptionalText(Option<Text>);

impl OptionalText {
    pub fn new(text: Option<&str>) -> Self {
        Self(text.map(Text::new))
    }

    pub fn get(&self) -> *const u16 {
        self.0.as_ref().map_or(std::ptr::null(), Text::get)
    }
}

/// What it passes points into its vectors, whose elements stay where they are when it is moved.
pub(crate) struct Dictionary {
    _texts: Vec<(Text, Text)>,
    fields: Vec<raw::lumeq_field>,
}

impl Dictionary {
    pub fn new(fields: Fields) -> Self {
        let texts: Vec<_> = fields.iter().map(|(name, value)| (Text::new(name), Text::new(value))).collect();
        let fields = texts.iter().map(|(name, value)| raw::lumeq_field { name: name.get(), value: value.get() });
        Self { fields: fields.collect(), _texts: texts }
    }

    pub fn get(&self) -> raw::lumeq_dictionary {
        raw::lumeq_dictionary { fields: self.fields.as_ptr(), count: self.fields.len() }
    }
}

/// The contexts of an event.
pub(crate) struct RawContext {
    _fields: Dictionary,
    local: Option<Box<raw::lumeq_dictionary>>,
    model: OptionalText,
}

impl RawContext {
    pub fn new(context: &Context) -> Self {
        let fields = Dictionary::new(context.local);
        let local = (!context.local.is_empty()).then(|| Box::new(fields.get()));
        Self { _fields: fields, local, model: OptionalText::new(context.model) }
    }

    /// Null for no fields.
    pub fn local(&self) -> *const raw::lumeq_dictionary {
        self.local.as_deref().map_or(std::ptr::null(), |its| its)
    }

    pub fn global(&self) -> *const u16 {
        self.model.get()
    }
}

/// What a function of lumeq.h writes that returns the size it needs. Each call is logged, so a second one is made only
/// for a text that does not fit.
pub(crate) fn written(write: impl Fn(*mut u16, usize) -> usize) -> String {
    let mut buffer = vec![0; 128];
    let mut needed = write(buffer.as_mut_ptr(), buffer.len());
    if needed > buffer.len() {
        buffer.resize(needed, 0);
        needed = write(buffer.as_mut_ptr(), buffer.len());
    }
    buffer.truncate(needed.saturating_sub(1));
    String::from_utf16_lossy(&buffer)
}
