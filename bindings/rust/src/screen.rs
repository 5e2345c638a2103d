//! Screens, the controls and ads on them, forms and reports.

use crate::raw;
use crate::text::{Context, Dictionary, Fields, OptionalText, RawContext, Text};
use crate::vocabulary::AdType;

/// Where the user is. Its name is required.
#[derive(Clone, Copy, Default)]
pub struct Screen<'a> {
    name: &'a str,
    flow: Option<&'a str>,
    path: Option<&'a str>,
    mode: Option<&'a str>,
    context: Context<'a>,
}

/// An ad; a text that it lacks is empty.
#[derive(Clone, Copy, Default)]
pub struct Ad<'a> {
    pub kind: AdType,
    pub product: &'a str,
    pub name: &'a str,
    pub variant: &'a str,
}

type AdFunction = unsafe extern "C" fn(*const raw::lumeq_screen, *const u16, *const raw::lumeq_ad);
type ClickFunction = unsafe extern "C" fn(*const raw::lumeq_screen, *const u16);

impl<'a> Screen<'a> {
    pub fn new(name: &'a str) -> Self {
        Self { name, ..Default::default() }
    }

    pub fn flow(self, flow: &'a str) -> Self {
        Self { flow: Some(flow), ..self }
    }

    pub fn path(self, path: &'a str) -> Self {
        Self { path: Some(path), ..self }
    }

    pub fn mode(self, mode: &'a str) -> Self {
        Self { mode: Some(mode), ..self }
    }

    pub fn context(self, context: Context<'a>) -> Self {
        Self { context, ..self }
    }

    pub fn shown(&self) {
        // SAFETY: the library copies what the struct points to.
        self.pass(|screen| unsafe { raw::lumeq_screen_displayed(screen) })
    }

    pub fn button_clicked(&self, name: &str) {
        self.click(raw::lumeq_button_clicked, name)
    }

    pub fn tile_clicked(&self, name: &str) {
        self.click(raw::lumeq_tile_clicked, name)
    }

    pub fn hyperlink_clicked(&self, name: &str) {
        self.click(raw::lumeq_hyperlink_clicked, name)
    }

    pub fn checkbox_changed(&self, name: &str, is_checked: bool) {
        let name = Text::new(name);
        // SAFETY: the library copies what the struct points to, and the text.
        self.pass(|screen| unsafe { raw::lumeq_checkbox_changed(screen, name.get(), is_checked.into()) })
    }

    pub fn ad_displayed(&self, control_name: &str, ad: &Ad) {
        self.pass_ad(raw::lumeq_ad_displayed, control_name, ad)
    }

    pub fn ad_clicked(&self, control_name: &str, ad: &Ad) {
        self.pass_ad(raw::lumeq_ad_clicked, control_name, ad)
    }

    pub fn ad_closed(&self, control_name: &str, ad: &Ad) {
        self.pass_ad(raw::lumeq_ad_closed, control_name, ad)
    }

    /// Calls `function` with a struct that is valid for the call.
    fn pass(&self, function: impl FnOnce(&raw::lumeq_screen)) {
        let (name, context) = (Text::new(self.name), RawContext::new(&self.context));
        let [flow, path, mode] = [self.flow, self.path, self.mode].map(OptionalText::new);
        function(&raw::lumeq_screen {
            flow: flow.get(),
            screen_path: path.get(),
            screen_name: name.get(),
            mode: mode.get(),
            local_context: context.local(),
            global_context: context.global(),
            ..Default::default()
        })
    }

    fn click(&self, function: ClickFunction, name: &str) {
        let name = Text::new(name);
        // SAFETY: the library copies what the struct points to, and the text.
        self.pass(|screen| unsafe { function(screen, name.get()) })
    }

    fn pass_ad(&self, function: AdFunction, control_name: &str, ad: &Ad) {
        let [control, product, name, variant] = [control_name, ad.product, ad.name, ad.variant].map(Text::new);
        let its = raw::lumeq_ad {
            product: product.get(),
            name: name.get(),
            variant: variant.get(),
            r#type: ad.kind as i32,
            ..Default::default()
        };
        // SAFETY: the library copies what the structs point to, and the text.
        self.pass(|screen| unsafe { function(screen, control.get(), &its) })
    }
}

/// A form or a report. The four texts are required.
#[derive(Clone, Copy, Default)]
pub struct Form<'a> {
    pub org_name: &'a str,
    pub code_name: &'a str,
    pub name: &'a str,
    pub version: &'a str,
    pub details: Fields<'a>,
    pub context: Context<'a>,
}

impl Form<'_> {
    pub fn submitted(&self) {
        self.pass(raw::lumeq_form_submitted)
    }

    pub fn generated(&self) {
        self.pass(raw::lumeq_report_generated)
    }

    fn pass(&self, function: unsafe extern "C" fn(*const raw::lumeq_form)) {
        let [org, code, name, version] =
            [self.org_name, self.code_name, self.name, self.version].map(Text::new);
        let (details, context) = (Dictionary::new(self.details), RawContext::new(&self.context));
        let form = raw::lumeq_form {
            org_name: org.get(),
            code_name: code.get(),
            name: name.get(),
            version: version.get(),
            details: details.get(),
            local_context: context.local(),
            global_context: context.global(),
            ..Default::default()
        };
        // SAFETY: the library copies what the struct points to.
        unsafe { function(&form) }
    }
}

pub fn url_launched(url: &str, context: &Context) {
    let (url, context) = (Text::new(url), RawContext::new(context));
    // SAFETY: the library copies the texts and fields.
    unsafe { raw::lumeq_url_launched(url.get(), context.local(), context.global()) }
}
